// What the pointer says while the program is at work. Both are scopes: leaving them, by whatever way, takes
// back what they did.
#pragma once

#include <QtGlobal>

// The pointer shows that the program is at work.
class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    Q_DISABLE_COPY(BusyCursor)
};

// The program waits for its user for a while, with the pointer as it usually is. Does nothing when it is not
// at work.
class BusyCursorPause {
public:
    BusyCursorPause();
    ~BusyCursorPause();
    Q_DISABLE_COPY(BusyCursorPause)

private:
    const bool m_wasBusy;
};
