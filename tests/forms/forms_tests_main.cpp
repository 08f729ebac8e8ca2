// Runs every registered test class of the forms; the exit status counts the
// classes that failed. Arguments such as -v2 go to each class.
#include <QApplication>
#include <QTest>

#include <cstdio>

#include "forms_test_registry.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int failed = 0, passed = 0;
    for (const auto& make : osm::test::FormsTests()) {
        std::unique_ptr<QObject> test = make();
        if (QTest::qExec(test.get(), argc, argv) == 0)
            ++passed;
        else
            ++failed;
    }
    std::printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}
