// What the leak check of the address sanitizer must not hold against us. Compiled into every program that
// links this support, since the sanitizer asks the program itself; without a sanitizer nobody calls it.

extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_options();

extern "C" const char *__lsan_default_suppressions()
{
    // Qt and its font library keep what they need until the process ends. The window never deletes its number
    // expression, on purpose.
    return "leak:libqoffscreen\n"
           "leak:libfontconfig\n"
           "leak:makeNumberRegExp\n";
}

// Standard error belongs to the program under test.
extern "C" const char *__lsan_default_options() { return "print_suppressions=0"; }
