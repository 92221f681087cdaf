#pragma once

#include <chrono>
#include <functional>

#include "engine/shutdown_manager.h"
#include "platform/lifetime.h"
#include "platform/observer_list.h"
#include "platform/run_loop.h"

namespace lunevra {

/// Keeps a view's model up to date: reads anew on the turn of the run loop after the engine has
/// announced a change and, while the view is drawn, every few seconds, because remaining times and
/// the statuses of services go by without the engine changing. Its observers are told afterwards.
class EngineFollower {
 public:
  /// `read` takes the model's values; all three outlive the follower. Does not read by itself
  /// before the first change.
  EngineFollower(RunLoop& runLoop, ShutdownManager& engine, std::function<void()> read);
  EngineFollower(const EngineFollower&) = delete;
  EngineFollower& operator=(const EngineFollower&) = delete;
  ~EngineFollower() = default;

  [[nodiscard]] Registration observeChanges(std::function<void()> changed) {
    return observers_.add(std::move(changed));
  }
  void setDrawn(bool isDrawn);
  void readNow();
  /// Once, however often it is asked for during one turn.
  void readSoon();

 private:
  RunLoop& runLoop_;
  std::function<void()> read_;
  ObserverList observers_;
  bool isStale_ = false;
  Registration engineObservation_;
  Registration redrawTimer_;
  Lifetime lifetime_;
};

}  // namespace lunevra
