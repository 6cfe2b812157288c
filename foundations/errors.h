// errors.h -- diagnostics and verbosity.
// Every report of the system goes to standard error through these functions.
// Error and IError end the process with status 1; nothing is thrown.
// Every fatal path of the system ends in FatalExit, so that a program that
// embeds the system may choose the status, or run a hook first.
#ifndef FOUNDATIONS_ERRORS_H
#define FOUNDATIONS_ERRORS_H

#include <functional>

#define TAVIK_PRINTF(f, a) __attribute__((format(printf, f, a)))

extern int VERBOSE;            // 0 silences every Verbose message
extern int PIPE;               // non-zero: progress redraws become "^R"/"^B" lines
extern const char TOOL_NAME_DFLT[];  // " ": error headers before a name is set
extern const char WHEEL[];     // the four spinner glyphs
extern int WHEEL_STEP;         // calls counted since the last glyph
extern int WHEEL_INDEX;        // next glyph, 0..3
extern int nb_global_error;    // errors counted by GError

void set_verbose_mode();
void set_verbose_mode(int level);
void set_pipe_mode();

// The error headers print `name` from now on; it is not copied.
void set_errors_tool_name(const char* name);

int Verbose();
// Progress message when VERBOSE is non-zero (respectively >= level). In pipe
// mode a leading '\r' becomes " \n^R" and a leading '\b' "\n^B". Returns VERBOSE.
int Verbose(const char* fmt, ...) TAVIK_PRINTF(1, 2);
int Verbose(int level, const char* fmt, ...) TAVIK_PRINTF(2, 3);

// Advances the spinner on a terminal: a glyph every `period` calls. Returns VERBOSE.
int VerboseWheel(int period);

// Ends the process with `status`: runs the fatal hook, if any, then exits.
// Every end of the process decided by the system's code (a fatal diagnostic,
// "-version", "-h") goes through here.
[[noreturn]] void ExitProcess(int status);
// Ends the process after a fatal diagnostic: ExitProcess with the fatal status.
[[noreturn]] void FatalExit();
// The status of the process at a fatal exit; 1 unless set.
void set_fatal_status(int status);
// Runs `hook` (null: none) at every ExitProcess before the process ends. A
// hook that does not return (a longjmp, an exception) keeps the process.
void set_fatal_hook(void (*hook)());

// Runs `body`; where it would end the process, it is left instead and the
// result is false. For code that meets untrusted input (a condition typed in
// the window, a fuzzed file): what the body built so far stays as it is.
bool survive_process_end(const std::function<void()>& body);

// "<tool> Error :", the message, a newline, then FatalExit.
[[noreturn]] void Error(const char* fmt, ...) TAVIK_PRINTF(1, 2);
// "<tool> Warning :", the message and a newline; the process goes on.
int Warning(const char* fmt, ...) TAVIK_PRINTF(1, 2);
// "Sorry, Internal Error :", the message, a newline, then FatalExit.
[[noreturn]] void IError(const char* fmt, ...) TAVIK_PRINTF(1, 2);

// The message alone, counted; GErrorRecover stops the process once any was
// counted. Returns what vfprintf returned.
int GError(const char* fmt, ...) TAVIK_PRINTF(1, 2);
int GErrors();
void GErrorRecover();

#endif
