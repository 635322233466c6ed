// Every test program starts with the same locale, time zone and window
// platform, whatever the machine's: results never depend on them. Set in the
// program itself, before main, so that every way of running it agrees.
#include <cstdlib>

namespace {

const bool kEnvironmentFixed = [] {
    setenv("LANG", "C.UTF-8", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("TZ", "UTC", 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    return true;
}();

} // namespace
