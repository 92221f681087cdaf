#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "engine/shutdown_manager.h"
#include "platform/host.h"
#include "platform/lifetime.h"
#include "platform/observer_list.h"
#include "ui/lock_screen/quote.h"
#include "ui/lock_screen/quotes_provider.h"

namespace lunevra {

/// What stands in front of the backdrop.
enum class PhaseScreen : std::uint8_t { none, countdown, ambient };

/// What one lock window shows. Every value stays as it is between two calls of the observers, who
/// are told after a change, on the main thread. Nothing ticks unless the ambient screen is drawn.
class LockScreenModel {
 public:
  /// `ticks` drives what moves on the screen; the engine's own run loop is the host's. Everything
  /// given outlives the model.
  LockScreenModel(const Host& host, RunLoop& ticks, ShutdownManager& engine);
  ~LockScreenModel() = default;
  LockScreenModel(const LockScreenModel&) = delete;
  LockScreenModel& operator=(const LockScreenModel&) = delete;

  /// Whether the window is on a screen at all.
  void setDrawn(bool isDrawn);

  [[nodiscard]] PhaseScreen screen() const { return screen_; }
  [[nodiscard]] std::int64_t countdownValue() const { return countdownValue_; }
  /// "HH:mm" of the 24-hour clock; empty until the ambient screen is shown.
  [[nodiscard]] const std::string& clockText() const { return clockText_; }
  [[nodiscard]] const std::string& lockedUntilText() const { return lockedUntilText_; }
  /// Nothing without a commitment.
  [[nodiscard]] const std::optional<std::string>& commitmentText() const { return commitmentText_; }
  [[nodiscard]] const std::string& hintText() const { return hintText_; }
  /// Nothing before the ambient screen is first shown.
  [[nodiscard]] const std::optional<Quote>& currentQuote() const { return currentQuote_; }

  [[nodiscard]] Registration observeChanges(std::function<void()> changed);

 private:
  void refreshSoon();
  void refresh();
  void readTexts();
  void enterAmbientScreen();
  void updateTicks();
  void clockTicked();
  void quoteTicked();
  [[nodiscard]] std::string currentTimeText() const;

  Host host_;
  RunLoop& ticks_;
  const ShutdownManager& engine_;
  ObserverList observers_;

  PhaseScreen screen_ = PhaseScreen::none;
  std::int64_t countdownValue_ = 0;
  std::string clockText_;
  std::string lockedUntilText_;
  std::optional<std::string> commitmentText_;
  std::string hintText_;
  std::optional<QuotesProvider> quotesProvider_;
  std::optional<Quote> currentQuote_;

  bool isDrawn_ = false;
  bool isStale_ = false;
  Registration clockTimer_;
  Registration quoteTimer_;
  Registration engineObservation_;
  Lifetime lifetime_;
};

}  // namespace lunevra
