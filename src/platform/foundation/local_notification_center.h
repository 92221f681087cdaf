#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/notification_center.h"
#include "platform/observer_list.h"

namespace lunevra {

/// The notification centre of one process, the same on every host.
class LocalNotificationCenter : public NotificationCenter {
 public:
  void post(std::string_view name) override {
    if (const auto found = observers_.find(name); found != observers_.end()) found->second.notify();
  }

  [[nodiscard]] Registration addObserver(std::string_view name,
                                         std::function<void()> block) override {
    return observers_[std::string(name)].add(std::move(block));
  }

 private:
  std::map<std::string, ObserverList, std::less<>> observers_;
};

}  // namespace lunevra
