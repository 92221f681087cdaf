#include "platform/linux/event_thread.h"

#include <cstdint>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

#include "platform/localized_error.h"

namespace lunevra {

EventThread::EventThread() : wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  sd_event* loop = nullptr;
  if (!wakeUp_ || sd_event_new(&loop) < 0) throw LocalizedError("Too many files are open.");
  loop_.reset(loop);
  const auto drain = [](sd_event_source*, int descriptor, std::uint32_t, void*) {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = ::read(descriptor, &count, sizeof count);
    return 0;
  };
  sd_event_source* source = nullptr;
  if (sd_event_add_io(loop, &source, wakeUp_.get(), EPOLLIN, drain, nullptr) < 0)
    throw LocalizedError("Too many files are open.");
  wakeUpSource_.reset(source);
  thread_ = std::thread([this] { run(); });
}

EventThread::~EventThread() {
  {
    const std::lock_guard lock(mutex_);
    isStopped_ = true;
  }
  wake();
  thread_.join();
  work_.clear();  // it may hold what is attached to the loop
}

void EventThread::async(std::function<void(sd_event*)> work) {
  {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
  }
  wake();
}

void EventThread::run() {
  pthread_setname_np(pthread_self(), "lunevra-bus");
  for (;;) {
    {
      const std::lock_guard lock(mutex_);
      if (isStopped_) return;
    }
    runWork();
    if (sd_event_run(loop_.get(), UINT64_MAX) < 0) return;  // only a loop that is over fails
  }
}

void EventThread::runWork() {
  std::vector<std::function<void(sd_event*)>> round;
  {
    const std::lock_guard lock(mutex_);
    round.swap(work_);
  }
  for (const auto& work : round) work(loop_.get());
}

void EventThread::wake() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(wakeUp_.get(), &one, sizeof one);
}

}  // namespace lunevra
