// Leaks that the address sanitizer is not to report. Compiled into every program that links this support,
// because the sanitizer asks the program itself; without a sanitizer nothing calls these functions.

extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_options();

extern "C" const char *__lsan_default_suppressions()
{
    // Qt and its font library keep some memory until the process ends. The window never deletes its number
    // expression, deliberately.
    return "leak:libqoffscreen\n"
           "leak:libfontconfig\n"
           "leak:makeNumberRegExp\n";
}

// Tests compare the whole standard error of the program under test.
extern "C" const char *__lsan_default_options() { return "print_suppressions=0"; }
