#include "platform/linux/instance_calls.h"

#include <array>
#include <string>
#include <sys/inotify.h>

namespace lunevra {

InstanceCalls::InstanceCalls(const SingleInstance& instance)
    : inotify_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  const auto lockFile = "/proc/self/fd/" + std::to_string(instance.fileDescriptor());
  // Where it fails a further start shows nothing, and all the rest goes on.
  ::inotify_add_watch(inotify_.get(), lockFile.c_str(), IN_ATTRIB);
}

bool InstanceCalls::take() {
  std::array<char, 4096> events;
  bool wasCalled = false;
  while (::read(inotify_.get(), events.data(), events.size()) > 0) wasCalled = true;
  return wasCalled;
}

}  // namespace lunevra
