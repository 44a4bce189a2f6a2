// Linked into a program, makes every change of the C locale fail and prints what the first "C" was meant for.
#include <clocale>
#include <cstdio>
#include <cstring>

extern "C" char *setlocale(int category, const char *name) noexcept
{
    static bool printed = false;
    if (name && !std::strcmp(name, "C") && !printed) {
        printed = true;
        std::puts(category == LC_ALL ? "first C locale: all" : "first C locale: a part");
    }
    return nullptr;
}
