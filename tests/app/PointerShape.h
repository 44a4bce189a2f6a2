// The shape of the mouse pointer over the whole program.
#pragma once

#include <QCursor>
#include <QGuiApplication>

// Every widget shows its own pointer.
constexpr int usualPointer = -1;

inline int pointerShape()
{
    const QCursor *pointer = QGuiApplication::overrideCursor();
    return pointer ? int(pointer->shape()) : usualPointer;
}
