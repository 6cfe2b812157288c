// instant.cpp -- the texts of run-time problems.
#include "trace/instant.h"

#include <cstdio>

#include "ecexe/rp_exe.h"

const char* problem_word(int status, bool assertion) {
  switch (status) {
    case RP_NIL: return "nil";
    case RP_DIVBYZERO: return "divbyzero";
    case RP_FALSE: return assertion ? "false" : nullptr;
    default: return nullptr;
  }
}

char* format_problem(const Problem& p, char* out) {
  if (p.source == Problem::Step) return out + snprintf(out, kProblemTextMax, "step is aborted");
  bool assertion = p.source == Problem::Assertion;
  return out + snprintf(out, kProblemTextMax, "%dth %s raised %s", p.index + 1,
                        assertion ? "assert" : "output", problem_word(p.status, assertion));
}
