// sanitizer_options.cpp -- linked into the unit tests of sanitizer builds.
// Long-lived objects of the system are never freed by design, so leak
// detection would only report them; every other check stays on.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }
extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1:halt_on_error=1"; }
