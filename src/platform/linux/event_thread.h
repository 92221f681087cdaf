#pragma once

#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/linux/bus_handles.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// A thread that sleeps in an event loop and runs there what it is given, one piece after another.
class EventThread {
 public:
  /// Throws LocalizedError if the computer has no descriptors left for it.
  EventThread();
  /// Waits for the piece of work that is running; what has not begun is dropped.
  ~EventThread();
  EventThread(const EventThread&) = delete;
  EventThread& operator=(const EventThread&) = delete;

  /// Any thread. The work must not throw.
  void async(std::function<void(sd_event* loop)> work);

 private:
  void run();
  void runWork();
  void wake() const;

  EventLoop loop_;
  UniqueDescriptor wakeUp_;
  EventSource wakeUpSource_;
  std::mutex mutex_;
  std::vector<std::function<void(sd_event*)>> work_;
  bool isStopped_ = false;
  std::thread thread_;  // last: it uses all of the above
};

}  // namespace lunevra
