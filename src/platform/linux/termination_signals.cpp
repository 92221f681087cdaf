#include "platform/linux/termination_signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/localized_error.h"

namespace lunevra {

TerminationSignals::TerminationSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ < 0) throw LocalizedError("Requests to terminate cannot be received.");
}

TerminationSignals::~TerminationSignals() {
  close(descriptor_);
}

bool TerminationSignals::take() {
  signalfd_siginfo info;
  bool hasCome = false;
  while (read(descriptor_, &info, sizeof info) == sizeof info) hasCome = true;
  return hasCome;
}

}  // namespace lunevra
