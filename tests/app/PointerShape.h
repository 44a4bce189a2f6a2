// The shape of the mouse pointer over the whole program.
#pragma once

#include <QCursor>
#include <QGuiApplication>

// Every widget shows the pointer of its own.
constexpr int usualPointer = -1;

inline int pointerShape()
{
    const QCursor *pointer = QGuiApplication::overrideCursor();
    return pointer ? int(pointer->shape()) : usualPointer;
}
