// How far a long piece of work has come.
#pragma once

#include <cstddef>

// Called each time a block of about a megabyte has been read from a stream or handed to one, with its number
// of bytes. It must not throw. Null: nobody watches.
using StlProgressObserver = void (*)(std::size_t bytes);
inline StlProgressObserver stlProgressObserver = nullptr;

inline void stlTellProgress(std::size_t bytes)
{
    if (stlProgressObserver != nullptr)
        stlProgressObserver(bytes);
}
