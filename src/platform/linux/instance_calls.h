#pragma once

#include "platform/linux/single_instance.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// Hears of further starts of the program by hand, each of which touches the lock file of the copy
/// that runs and ends. Needs neither a bus nor a name. One thread.
class InstanceCalls {
 public:
  explicit InstanceCalls(const SingleInstance& instance);

  /// Readable when the program has been started once more; -1 if that cannot be heard.
  [[nodiscard]] int fileDescriptor() const { return inotify_.get(); }
  /// Takes what has come; whether there was a call.
  [[nodiscard]] bool take();

 private:
  UniqueDescriptor inotify_;
};

}  // namespace lunevra
