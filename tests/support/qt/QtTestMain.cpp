#include "tests/support/qt/QtTestMain.h"

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

int runQtTest(int argc, char **argv, const std::function<QObject *()> &makeTest)
{
    // File dialogs save the latest folders in a settings file, and Qt creates a folder for run-time files.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    const std::unique_ptr<QObject> test(makeTest());
    return QTest::qExec(test.get(), argc, argv);
}
