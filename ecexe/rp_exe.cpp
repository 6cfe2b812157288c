// rp_exe.cpp -- the defaults of the abstract reactive program.
// Operations that every implementation must provide refuse loudly, so that a
// missing override is found at its first call rather than read as a value.
#include "ecexe/rp_exe.h"
#include "foundations/errors.h"

#include <cstdio>
#include <cstdlib>

static const char ONLY_VIRTUAL[] = "RPExe only virtual";

void RPExe::Error(const char* text) {
  fputs(text, stderr);
  fflush(stderr);
  FatalExit();
}

RPExe::~RPExe() {}

const char* RPExe::name() { Error(ONLY_VIRTUAL); }
int RPExe::nb_inputs() { Error(ONLY_VIRTUAL); }
const char* RPExe::input_ident(int) { Error(ONLY_VIRTUAL); }
const char* RPExe::input_type(int) { Error(ONLY_VIRTUAL); }
int RPExe::nb_outputs() { Error(ONLY_VIRTUAL); }
const char* RPExe::output_ident(int) { Error(ONLY_VIRTUAL); }
const char* RPExe::output_type(int) { Error(ONLY_VIRTUAL); }
void* RPExe::input_loc(int) { Error(ONLY_VIRTUAL); }
void* RPExe::output_loc(int) { Error(ONLY_VIRTUAL); }
int RPExe::step() { Error(ONLY_VIRTUAL); }
int RPExe::output_status(int) { Error(ONLY_VIRTUAL); }
void RPExe::reset_history() { Error(ONLY_VIRTUAL); }
int RPExe::assert_status(int) { Error(ONLY_VIRTUAL); }
int RPExe::eval_outputs() { Error(ONLY_VIRTUAL); }

int RPExe::nb_assertions() { return 0; }
int RPExe::nb_locals() { return 0; }
const char* RPExe::local_ident(int) { return nullptr; }
const char* RPExe::local_type(int) { return nullptr; }
void* RPExe::local_loc(int) { return nullptr; }
int RPExe::local_status(int) { return RP_NIL; }
int RPExe::allows_eval_outputs() { return 0; }

void RPExe::init_step() { Error("RPExe::init_step() not available for this instance"); }
void RPExe::end_step() { Error("RPExe::end_step() not available for this instance"); }
