// Operates the window of the real main function, which is linked with this file. When the application object
// exists, a timer is set that fills in the form, clicks Run and closes the window. What the user would have
// seen is printed.
//
// Arguments: "name=text" enters a text into a field, a name alone ticks a box, in this order. "end with 7"
// only ends the event loop with that status.
#include "app/MeshvaneMainWindow.h"
#include "tests/support/qt/MessageBoxRecorder.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <memory>
#include <string>

namespace {

void print(const QString &what, const QString &value)
{
    std::puts(qPrintable(what + ": " + value.toUtf8().toPercentEncoding(" ,.:<>/_-\"'()%")));
    std::fflush(stdout);
}

QString decimalPoint() { return localeconv()->decimal_point; }

// Debug messages only; Qt warns about the display.
void printMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtDebugMsg)
        return;
    const bool bare = !context.file && context.line == 0 && !context.function;
    print(bare ? "debug message without context" : "debug message", text);
}

MeshvaneMainWindow *theWindow()
{
    MeshvaneMainWindow *found = nullptr;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<MeshvaneMainWindow *>(widget))
            found = window;
    }
    return found;
}

// The font that the program has by default, in the size that it sets.
QFont systemFontOfTenPoints()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSize(10);
    return font;
}

void printInitialState(const MeshvaneMainWindow &window)
{
    print("visible", window.isVisible() ? "yes" : "no");
    print("has parent", window.parent() ? "yes" : "no");
    print("title", window.windowTitle());
    print("locale of the window", window.locale().name());
    print("has the size of its hint", window.size() == window.minimumSizeHint() ? "yes" : "no");
    print("font apart from its size",
          QApplication::font() == systemFontOfTenPoints() ? "the system's" : "another");
    print("font size", QString::number(QApplication::font().pointSize()));
    print("font size of labels", QString::number(QApplication::font("QLabel").pointSize()));
    print("font size of menus", QString::number(QApplication::font("QMenu").pointSize()));
    print("C locale", std::setlocale(LC_ALL, nullptr) ? std::setlocale(LC_ALL, nullptr) : "(null)");
    print("C++ locale", QString::fromStdString(std::locale().name()));
    print("Qt locale", QLocale().name());
    print("decimal point", decimalPoint());
}

void enterArguments(const MeshvaneMainWindow &window)
{
    for (const QString &argument : QApplication::arguments().mid(1)) {
        if (argument.contains('='))
            window.findChild<QLineEdit *>(argument.section('=', 0, 0))->setText(argument.section('=', 1));
        else
            window.findChild<QCheckBox *>(argument)->setChecked(true);
    }
}

void runOnce()
{
    MeshvaneMainWindow *window = theWindow();
    if (!window)
        std::exit(99);
    QObject::connect(window, &QObject::destroyed, [] {
        print("window destroyed", qApp ? "before the application" : "after the application");
    });
    if (QApplication::arguments().contains("end with 7")) {
        QApplication::exit(7);
        return;
    }
    printInitialState(*window);
    enterArguments(*window);
    MessageBoxRecorder boxes;
    boxes.whenShown([](const ShownBox &box) { print("box", box.text); });
    window->findChild<QDialogButtonBox *>("buttonBox")->button(QDialogButtonBox::Apply)->click();
    print("status", window->statusBar()->currentMessage());
    window->close();
}

void driveTheApplication()
{
    qInstallMessageHandler(printMessage);
    print("initial decimal point", decimalPoint());
    // The locale has no name now, so a later "C" comes from the program.
    std::locale::global(std::locale(std::locale(), new std::numpunct<char>));
    print("initial C++ locale", QString::fromStdString(std::locale().name()));
    QTimer::singleShot(0, qApp, runOnce);
}
Q_COREAPP_STARTUP_FUNCTION(driveTheApplication)

} // namespace
