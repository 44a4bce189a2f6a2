// Shows on the main window what a run has to say.
#pragma once

#include "transform/RunReporter.h"

#include <functional>

class QMainWindow;

class WindowRunReporter final : public RunReporter {
public:
    WindowRunReporter(QMainWindow &window, std::function<void(const QString &)> showError);

    void error(const QString &text) override;
    void logNotEmptied(const QString &details) override;
    void finished(const QString &statusText) override;

private:
    QMainWindow &m_window;
    std::function<void(const QString &)> m_showError;
};
