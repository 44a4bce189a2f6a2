// What the tests of the window start from: a new window in a folder of its own that holds "in.stl", the
// triangle, and a recorder that answers the window's message boxes.
#pragma once

#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class WindowTest : public QObject {
    Q_OBJECT

protected:
    // Clicks Run and returns the texts of the boxes that come up.
    QStringList messagesOfARun()
    {
        m_boxes->clear();
        m->run();
        return m_boxes->texts();
    }
    QStringList messagesOfARun(const QString &input, const QString &output)
    {
        m->enterFiles(input, output);
        return messagesOfARun();
    }

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;

private slots:
    void init();
    void cleanup();
};
