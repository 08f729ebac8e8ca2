#pragma once
// Test classes of the forms register here and run from one program.
#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace osm::test {

using FormsTestFactory = std::function<std::unique_ptr<QObject>()>;

// Every registered class, in the order of registration.
inline std::vector<FormsTestFactory>& FormsTests() {
    static std::vector<FormsTestFactory> tests;
    return tests;
}

struct RegisterFormsTest {
    explicit RegisterFormsTest(FormsTestFactory f) { FormsTests().push_back(std::move(f)); }
};

}  // namespace osm::test

// Registers the QObject test class `Class` (default-constructible).
#define OSM_FORMS_TEST(Class)                                                   \
    static const ::osm::test::RegisterFormsTest osmFormsTest##Class{            \
        [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); }}
