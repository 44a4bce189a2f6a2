#include "app/WindowRunReporter.h"

#include "app/BusyCursor.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>

namespace {

constexpr int finishedMilliseconds = 5000;

} // namespace

WindowRunReporter::WindowRunReporter(QMainWindow &window, std::function<void(const QString &)> showError)
    : m_window(window),
      m_showError(std::move(showError))
{}

void WindowRunReporter::error(const QString &text)
{
    const BusyCursorPause pause;
    m_showError(text);
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
