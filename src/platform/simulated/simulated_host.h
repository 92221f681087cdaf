#pragma once

#include <functional>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/local_notification_center.h"
#include "platform/host.h"
#include "platform/simulated/simulated_calendar.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/simulated_key_parts.h"
#include "platform/simulated/simulated_protection.h"
#include "platform/simulated/simulated_stores.h"
#include "platform/simulated/simulated_time.h"

namespace lunevra {

/// Counts what is posted, by name.
class CountingNotificationCenter final : public LocalNotificationCenter {
 public:
  void post(std::string_view name) override {
    ++posted_[std::string(name)];
    LocalNotificationCenter::post(name);
  }
  /// How many were posted since the last call for that name.
  [[nodiscard]] int takeCount(const std::string& name) { return std::exchange(posted_[name], 0); }
  void forgetCounts() { posted_.clear(); }

 private:
  std::map<std::string, int> posted_;
};

class MemoryLog final : public Log {
 public:
  void line(std::string_view text) override {
    lines_.emplace_back(text);
    if (onLine_) onLine_(lines_.back());
  }
  void setObserver(std::function<void(const std::string&)> onLine) { onLine_ = std::move(onLine); }
  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
  void clear() { lines_.clear(); }

 private:
  std::vector<std::string> lines_;
  std::function<void(const std::string&)> onLine_;
};

/// Repeatable bytes, for rehearsals and tests only.
class SeededRandom final : public RandomSource {
 public:
  void seed(std::uint64_t seed) { generator_.seed(seed); }
  [[nodiscard]] bool fill(std::span<std::uint8_t> bytes) override {
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(generator_());
    return true;
  }

 private:
  std::mt19937_64 generator_{1};
};

/// A whole computer in memory, on virtual time. What a real one keeps over the end of a process
/// stays: stores, keychain, drives, services, displays. One thread only.
struct SimulatedHost {
  /// Counts changes of the stores, so that a reader can tell cheaply that nothing has happened.
  std::uint64_t storeChanges = 0;

  SimulatedTime time;
  SimulatedCalendar calendar;
  CountingNotificationCenter notificationCenter;
  SimulatedUserDefaultsDomains defaults{[this] { ++storeChanges; }};
  SimulatedCloud cloud{[this] { ++storeChanges; }};
  MemoryLog log;
  SeededRandom random;
  SimulatedKeychain keychain;
  SimulatedVolumes volumes;
  SimulatedServices services;
  std::function<void(const FirewallRequest&)> onFirewallRequest = [](const auto&) {};
  SimulatedFirewallHelper firewallHelper{
      [this](const FirewallRequest& request) { onFirewallRequest(request); }};
  SimulatedOpenPanels openPanels{time};

  SimulatedDisplays displays;
  SimulatedApplication application{displays};
  SimulatedKeyEvents keyEvents;
  CountingNotificationCenter workspaceNotifications;

  [[nodiscard]] Host host() {
    return {time,   calendar, time,    notificationCenter, defaults,       cloud,     log,
            random, keychain, volumes, services,           firewallHelper, openPanels};
  }
  [[nodiscard]] Desktop desktop() {
    return {displays, application, keyEvents, workspaceNotifications};
  }
};

}  // namespace lunevra
