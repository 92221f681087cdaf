#pragma once

#include <array>
#include <cstddef>

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>
#include <QtQml/qqmlregistration.h>

#include "ui/lock_screen/lock_screen_model.h"

namespace lunevra {

/// One window's model as the views read it. A new quote goes to the slot that is not shown, so that
/// one can fade into the other.
class LockScreenBridge : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made for its window")
  Q_PROPERTY(Phase phase READ phase NOTIFY changed)
  Q_PROPERTY(int countdownValue READ countdownValue NOTIFY changed)
  Q_PROPERTY(QString clockText READ clockText NOTIFY changed)
  Q_PROPERTY(QString lockedUntilText READ lockedUntilText NOTIFY changed)
  Q_PROPERTY(QString commitmentText READ commitmentText NOTIFY changed)
  Q_PROPERTY(QString hintText READ hintText NOTIFY changed)
  Q_PROPERTY(QString evenQuote READ evenQuote NOTIFY changed)
  Q_PROPERTY(QString evenAuthor READ evenAuthor NOTIFY changed)
  Q_PROPERTY(QString oddQuote READ oddQuote NOTIFY changed)
  Q_PROPERTY(QString oddAuthor READ oddAuthor NOTIFY changed)
  Q_PROPERTY(bool showsOddQuote READ showsOddQuote NOTIFY changed)

 public:
  // NOLINTBEGIN(readability-identifier-naming): QML knows enumerators by their capital letter
  enum Phase { None, Countdown, Ambient };
  Q_ENUM(Phase)
  // NOLINTEND(readability-identifier-naming)

  LockScreenBridge(const Host& host, RunLoop& ticks, ShutdownManager& engine);

  [[nodiscard]] LockScreenModel& model() { return model_; }
  [[nodiscard]] const Host& host() const { return host_; }
  [[nodiscard]] RunLoop& ticks() const { return ticks_; }

  [[nodiscard]] Phase phase() const;
  [[nodiscard]] int countdownValue() const { return static_cast<int>(model_.countdownValue()); }
  [[nodiscard]] QString clockText() const { return QString::fromStdString(model_.clockText()); }
  [[nodiscard]] QString lockedUntilText() const;
  /// Empty without a commitment.
  [[nodiscard]] QString commitmentText() const;
  [[nodiscard]] QString hintText() const { return QString::fromStdString(model_.hintText()); }
  [[nodiscard]] QString evenQuote() const { return slots_[0].text; }
  [[nodiscard]] QString evenAuthor() const { return slots_[0].author; }
  [[nodiscard]] QString oddQuote() const { return slots_[1].text; }
  [[nodiscard]] QString oddAuthor() const { return slots_[1].author; }
  [[nodiscard]] bool showsOddQuote() const { return shownSlot_ == 1; }

 signals:
  void changed();

 private:
  struct Slot {
    QString text;
    QString author;
  };
  void takeQuote();

  Host host_;
  RunLoop& ticks_;
  LockScreenModel model_;
  std::array<Slot, 2> slots_;
  std::size_t shownSlot_ = 0;
  Registration observation_;
};

}  // namespace lunevra
