// Linked into a program, makes every change of the C locale fail.
#include <clocale>

extern "C" char *setlocale(int, const char *) noexcept { return nullptr; }
