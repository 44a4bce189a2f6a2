// Shows the messages of a run on the main window.
#pragma once

#include "transform/RunReporter.h"

class QMainWindow;

class WindowRunReporter final : public RunReporter {
public:
    // The window must outlive this object.
    explicit WindowRunReporter(QMainWindow &window);

    void error(const QString &text) override;
    void logNotEmptied(const QString &details) override;
    void finished(const QString &statusText) override;

private:
    QMainWindow &m_window;
};
