// dro_load.cpp -- loading and driving a compiled .dro program.
// The descriptor is trusted once its version matches: a program compiled for
// another layout would be read wrongly, so the version test is exact.
#include "ecexe/dro_load.h"

#include <dlfcn.h>

#include <string>

#include <cstdio>
#include <cstring>

DROLoad::~DROLoad() {}

const char* DROLoad::refuse(const char* message) {
  desc = nullptr;
  error = message;
  return message;
}

const char* DROLoad::load(const char* path) {
  dlerror();  // forget a stale error of an earlier call
  // A name without a slash would send dlopen searching the library path;
  // the user means the file in the current directory.
  std::string file = strchr(path, '/') ? path : std::string("./") + path;
  handle = dlopen(file.c_str(), RTLD_LAZY);
  error = dlerror();
  if (error) return error;

  desc = static_cast<DroDesc*>(dlsym(handle, "dro_desc"));
  error = dlerror();
  if (error) {
    desc = nullptr;
    return error;
  }

  static char message[512];
  // Four bytes, the terminating NUL included: "1.10" and "1.1a" are refused.
  const char* version = desc->version ? desc->version : "(null)";
  if (strncmp(version, DRO_VERSION, 4) != 0) {
    snprintf(message, sizeof message, "Bad DRO version, expected %s, get %s\n", DRO_VERSION,
             version);
    return refuse(message);
  }
  // Calling through a null pointer would crash the simulator, not the program.
  if (!desc->step || !desc->reset) {
    snprintf(message, sizeof message, "DROLoad::load : '%s' has no step or reset function\n",
             path);
    return refuse(message);
  }

  if (desc->init) desc->init();
  reset_history();
  return nullptr;
}

const char* DROLoad::name() { return desc->name; }
int DROLoad::nb_inputs() { return desc->nb_inputs; }
const char* DROLoad::input_ident(int i) { return desc->inputs[i].ident; }
const char* DROLoad::input_type(int i) { return desc->inputs[i].type; }
void* DROLoad::input_loc(int i) { return desc->inputs[i].loc; }
int DROLoad::nb_outputs() { return desc->nb_outputs; }
const char* DROLoad::output_ident(int i) { return desc->outputs[i].ident; }
const char* DROLoad::output_type(int i) { return desc->outputs[i].type; }
void* DROLoad::output_loc(int i) { return desc->outputs[i].loc; }
int DROLoad::step() { return desc->step(); }
int DROLoad::output_status(int) { return RP_DEFINED; }
void DROLoad::reset_history() { desc->reset(); }
