// What the leak checker is not to report. Linked into every program of a sanitizer build.

#include <sanitizer/lsan_interface.h>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the checker's own name for it.
const char *__lsan_default_suppressions()
{
    // Qt keeps font engines, and the bus library its connections, in circles until the process ends. Objects of our own
    // are allocated by our own programs, and are reported still.
    return "leak:libQt6Gui.so\n"
           "leak:libQt6Quick.so\n"
           "leak:libQt6DBus.so\n"
           "leak:libdbus-1.so\n";
}

// NOLINTNEXTLINE(bugprone-reserved-identifier)
const char *__lsan_default_options()
{
    return "print_suppressions=0";
}
