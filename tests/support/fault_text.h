#pragma once
// Checking what a fault says.
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "core/fault.h"

namespace osm::test {

// The text of the fault `f` throws, "" (and a failure) if it throws none.
template <typename F>
std::string FaultText(F&& f) {
    try {
        f();
    } catch (const osm::Fault& e) {
        return e.what();
    }
    ADD_FAILURE() << "expected a fault";
    return "";
}

// Success when every part stands in the text.
inline ::testing::AssertionResult Holds(const std::string& text, std::initializer_list<const char*> parts) {
    for (const char* p : parts)
        if (text.find(p) == std::string::npos)
            return ::testing::AssertionFailure() << "'" << p << "' not in: " << text;
    return ::testing::AssertionSuccess();
}

}  // namespace osm::test
