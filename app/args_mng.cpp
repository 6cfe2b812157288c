// args_mng.cpp -- a small table-driven command-line parser.
#include "app/args_mng.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "foundations/errors.h"

ArgsMng::~ArgsMng() {}

const char* ArgsMng::next() {
  if (current_index + 1 >= argc) return nullptr;
  return argv[++current_index];
}

// The row matching `word`: the first option row of that name, or the
// closing default row.
static ArgToken* match(ArgToken* tokens, const char* word) {
  ArgToken* row = tokens;
  for (;; row++) {
    if (row->kind != 0) continue;
    if (!row->name || strcmp(row->name, word) == 0) return row;
  }
}

void ArgsMng::parse(int count, const char** vector, ArgToken* table) {
  argc = count;
  argv = vector;
  tokens = table;
  current_index = 1;
  while (current_index < argc) {
    const char* word = argv[current_index];
    if (strcmp(word, "-version") == 0) {
      printf("%s", version_text());
      ExitProcess(0);
    }
    ArgToken* row = match(tokens, word);
    if (row->handler) row->handler(this, row->param);
    current_index++;
  }
}

void ArgsMng::usage(int all) {
  for (ArgToken* row = tokens; !(row->kind == 0 && !row->name); row++) {
    if (!all && !row->visible) continue;
    if (row->kind == 0) fprintf(stderr, "    %s %s\n", row->name, row->help);
    else if (row->kind == 1) fprintf(stderr, "%s\n", row->help);
  }
}
