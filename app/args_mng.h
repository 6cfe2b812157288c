// args_mng.h -- a small table-driven command-line parser.
// A table of ArgToken rows ends with a default row (kind 0, null name) that
// catches every argument no option row matched.
#ifndef APP_ARGS_MNG_H
#define APP_ARGS_MNG_H

class ArgsMng;

// One row of an option table.
struct ArgToken {
  int kind;     // 0: option (or the closing default row); 1: help heading; other: skipped
  int visible;  // shown by the short help
  const char* name;  // compared whole; null in the closing default row
  void (*handler)(ArgsMng* args, int param);  // may be null
  int param;
  const char* help;  // printed after the name (the heading itself for kind 1)
};

class ArgsMng {
 public:
  virtual ~ArgsMng();

  // Runs the handler of the row matching each argument from argv[1] on.
  // "-version" prints the version and ends the process in any position.
  void parse(int argc, const char** argv, ArgToken* tokens);
  const char* current() const { return argv[current_index]; }
  // The next argument, which the caller consumes, or null at the end.
  const char* next();
  // The table's help lines on standard error: visible rows, or all of them.
  virtual void usage(int all);

  const char* name() const { return tool_name ? tool_name : argv[0]; }
  const char* version_text() const { return version ? version : "?.?"; }

  int argc = 0;
  const char** argv = nullptr;
  int current_index = 0;
  ArgToken* tokens = nullptr;
  const char* version = nullptr;
  const char* tool_name = nullptr;
};

#endif
