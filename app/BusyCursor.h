// The mouse pointer while the program is busy. Both classes are scope guards: their destructors undo what
// their constructors did.
#pragma once

#include <QtGlobal>

// Shows the busy pointer.
class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    Q_DISABLE_COPY(BusyCursor)
};

// Shows the usual pointer while a busy program waits for its user. Does nothing if no busy pointer is shown.
class BusyCursorPause {
public:
    BusyCursorPause();
    ~BusyCursorPause();
    Q_DISABLE_COPY(BusyCursorPause)

private:
    const bool m_wasBusy;
};
