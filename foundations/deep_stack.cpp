// deep_stack.cpp -- a helper thread with a large stack, joined at once.
#include "foundations/deep_stack.h"

#include <pthread.h>

namespace {

constexpr size_t kDeepStackSize = size_t{1} << 30;

thread_local bool on_deep_stack = false;

void* run_pass(void* arg) {
  on_deep_stack = true;
  (*static_cast<const std::function<void()>*>(arg))();
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
  bool started = pthread_attr_init(&attr) == 0 &&
                 pthread_attr_setstacksize(&attr, kDeepStackSize) == 0 &&
                 pthread_create(&thread, &attr, run_pass, const_cast<std::function<void()>*>(&pass)) == 0;
  pthread_attr_destroy(&attr);
  if (!started) {
    pass();
    return;
  }
  pthread_join(thread, nullptr);
}
