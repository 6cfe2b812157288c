// deep_stack.cpp -- a helper thread with a large stack, joined at once.
#include "foundations/deep_stack.h"

#include <pthread.h>

#include <exception>

namespace {

// A build may ask for less (the fuzzing build, whose inputs are small).
#ifndef TAVIK_DEEP_STACK_MB
#define TAVIK_DEEP_STACK_MB 1024
#endif
constexpr size_t kDeepStackSize = size_t{TAVIK_DEEP_STACK_MB} << 20;

thread_local bool on_deep_stack = false;

// The pass and what escaped it: an exception cannot leave its thread, so
// it is carried back and thrown again in the caller's.
struct Pass {
  const std::function<void()>* body;
  std::exception_ptr escaped;
};

void* run_pass(void* arg) {
  on_deep_stack = true;
  Pass* pass = static_cast<Pass*>(arg);
  try {
    (*pass->body)();
  } catch (...) {
    pass->escaped = std::current_exception();
  }
  return nullptr;
}

}  // namespace

void run_on_deep_stack(const std::function<void()>& pass) {
  if (on_deep_stack) {
    pass();
    return;
  }
  pthread_attr_t attr;
  pthread_t thread;
  Pass running = {&pass, nullptr};
  bool started = pthread_attr_init(&attr) == 0 &&
                 pthread_attr_setstacksize(&attr, kDeepStackSize) == 0 &&
                 pthread_create(&thread, &attr, run_pass, &running) == 0;
  pthread_attr_destroy(&attr);
  if (!started) {
    pass();
    return;
  }
  pthread_join(thread, nullptr);
  if (running.escaped) std::rethrow_exception(running.escaped);
}
