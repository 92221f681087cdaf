#include "platform/linux/background_thread.h"

#include <csignal>
#include <pthread.h>
#include <system_error>
#include <utility>

namespace lunevra {

std::optional<std::thread> startBackgroundThread(std::function<void()> work) {
  sigset_t all;
  sigset_t previous;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &previous);
  std::optional<std::thread> thread;
  try {
    thread.emplace(std::move(work));
  } catch (const std::system_error&) {
    thread.reset();  // who asked for it knows what to do without
  }
  pthread_sigmask(SIG_SETMASK, &previous, nullptr);
  return thread;
}

}  // namespace lunevra
