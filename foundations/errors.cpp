// errors.cpp -- diagnostics and verbosity.
// Process-wide state only; all output goes to standard error.
#include "foundations/errors.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

int VERBOSE = 0;
int PIPE = 0;
const char TOOL_NAME_DFLT[] = " ";
const char WHEEL[] = "|/-\\";
int WHEEL_STEP = 1;
int WHEEL_INDEX = 0;
int nb_global_error = 0;

static const char* tool_name = TOOL_NAME_DFLT;
static int fatal_status = 1;
static void (*fatal_hook)() = nullptr;

void set_verbose_mode() { VERBOSE = 1; }
void set_verbose_mode(int level) { VERBOSE = level; }
void set_pipe_mode() { PIPE = 1; }
void set_errors_tool_name(const char* name) { tool_name = name; }

void set_fatal_status(int status) { fatal_status = status; }
void set_fatal_hook(void (*hook)()) { fatal_hook = hook; }

void ExitProcess(int status) {
  if (fatal_hook) fatal_hook();
  exit(status);
}

void FatalExit() { ExitProcess(fatal_status); }

namespace {
struct ProcessEnd {};
void throw_process_end() { throw ProcessEnd{}; }
}  // namespace

bool survive_process_end(const std::function<void()>& body) {
  void (*saved)() = fatal_hook;
  fatal_hook = throw_process_end;
  bool ended = false;
  try {
    body();
  } catch (const ProcessEnd&) {
    ended = true;
  }
  fatal_hook = saved;
  return !ended;
}

int Verbose() { return VERBOSE; }

// Writes one progress message, turning the terminal redraw characters into
// line markers when a program reads the stream.
static void verbose_message(const char* fmt, va_list ap) {
  if (PIPE && fmt[0] == '\r') {
    fputs(" \n^R", stderr);
    fmt++;
  } else if (PIPE && fmt[0] == '\b') {
    fputs("\n^B", stderr);
    fmt++;
  }
  vfprintf(stderr, fmt, ap);
  fflush(stderr);
}

int Verbose(const char* fmt, ...) {
  if (VERBOSE == 0) return VERBOSE;
  va_list ap;
  va_start(ap, fmt);
  verbose_message(fmt, ap);
  va_end(ap);
  return VERBOSE;
}

int Verbose(int level, const char* fmt, ...) {
  if (VERBOSE < level) return VERBOSE;
  va_list ap;
  va_start(ap, fmt);
  verbose_message(fmt, ap);
  va_end(ap);
  return VERBOSE;
}

int VerboseWheel(int period) {
  if (VERBOSE == 0) return 0;
  if (!isatty(2)) return VERBOSE;
  if (WHEEL_STEP >= period) {
    WHEEL_STEP = 0;
    fprintf(stderr, "%c\b", WHEEL[WHEEL_INDEX]);
    fflush(stderr);
    WHEEL_INDEX = (WHEEL_INDEX + 1) % 4;
  } else {
    WHEEL_STEP++;
  }
  return VERBOSE;
}

void Error(const char* fmt, ...) {
  fprintf(stderr, "%s Error :\n", tool_name);
  va_list ap;
  va_start(ap, fmt);
  vfprintf(stderr, fmt, ap);
  va_end(ap);
  fputc('\n', stderr);
  FatalExit();
}

int Warning(const char* fmt, ...) {
  fprintf(stderr, "%s Warning :\n", tool_name);
  va_list ap;
  va_start(ap, fmt);
  vfprintf(stderr, fmt, ap);
  va_end(ap);
  return fputc('\n', stderr);
}

void IError(const char* fmt, ...) {
  fputs("Sorry, Internal Error :\n", stderr);
  va_list ap;
  va_start(ap, fmt);
  vfprintf(stderr, fmt, ap);
  va_end(ap);
  fputc('\n', stderr);
  FatalExit();
}

int GError(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  int written = vfprintf(stderr, fmt, ap);
  va_end(ap);
  nb_global_error++;
  return written;
}

int GErrors() { return nb_global_error; }

void GErrorRecover() {
  if (nb_global_error == 0) return;
  fprintf(stderr, "*** %d Errors stop\n", nb_global_error);
  FatalExit();
}
