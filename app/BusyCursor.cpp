#include "app/BusyCursor.h"

#include <QCursor>
#include <QGuiApplication>

BusyCursor::BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }

BusyCursor::~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }

BusyCursorPause::BusyCursorPause()
    : m_wasBusy(QGuiApplication::overrideCursor() != nullptr)
{
    if (m_wasBusy)
        QGuiApplication::restoreOverrideCursor();
}

BusyCursorPause::~BusyCursorPause()
{
    if (m_wasBusy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}
