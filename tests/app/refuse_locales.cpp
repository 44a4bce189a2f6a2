// Linked into a program, makes every change of the C locale fail, and says what the first "C" was asked for.
#include <clocale>
#include <cstdio>
#include <cstring>

extern "C" char *setlocale(int category, const char *name) noexcept
{
    static bool said = false;
    if (name && !std::strcmp(name, "C") && !said) {
        said = true;
        std::puts(category == LC_ALL ? "first C locale: all" : "first C locale: a part");
    }
    return nullptr;
}
