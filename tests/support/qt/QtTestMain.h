// A main function for tests of widgets that does not depend on how the test is started: no display, UTF-8
// file names, Qt's own dialogs, and no settings file in the home folder.
#pragma once

#include <QObject>

#include <functional>

int runQtTest(int argc, char **argv, const std::function<QObject *()> &makeTest);

#define MESHVANE_QTEST_MAIN(TestClass)                                                                       \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return runQtTest(argc, argv, []() -> QObject * { return new TestClass; });                           \
    }
