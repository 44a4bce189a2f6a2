#include "app/WindowRunReporter.h"

#include "app/BusyCursor.h"
#include "app/ErrorBox.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>

namespace {

constexpr int finishedMilliseconds = 5000;

} // namespace

WindowRunReporter::WindowRunReporter(QMainWindow &window)
    : m_window(window)
{}

void WindowRunReporter::error(const QString &text)
{
    const BusyCursorPause pause;
    showError(text);
}

void WindowRunReporter::logNotEmptied(const QString &details)
{
    const BusyCursorPause pause;
    QMessageBox::critical(&m_window, "Disc Write fail", details);
}

void WindowRunReporter::finished(const QString &statusText)
{
    m_window.statusBar()->showMessage(statusText, finishedMilliseconds);
}
