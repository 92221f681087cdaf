#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>
#include <QtCore/qstringlist.h>
#include <QtCore/qvariant.h>
#include <QtQml/qqmlregistration.h>

#include "ui/settings/settings_model.h"

namespace lunevra {

/// A layer of protection as the views read it.
struct HardnessRowValue {
  Q_GADGET
  QML_ANONYMOUS
  Q_PROPERTY(QString title MEMBER title)
  Q_PROPERTY(QString detail MEMBER detail)
  Q_PROPERTY(int status MEMBER status)
  Q_PROPERTY(QString actionLabel MEMBER actionLabel)
  Q_PROPERTY(int action MEMBER action)

 public:
  QString title;
  QString detail;
  int status = 0;
  QString actionLabel;  // empty without an action
  int action = 0;
};

/// The settings window's model as the views read it.
class SettingsBridge : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made for its window")
  Q_PROPERTY(bool committed READ committed NOTIFY changed)
  Q_PROPERTY(bool canEditSchedule READ canEditSchedule NOTIFY changed)
  Q_PROPERTY(bool canChangeProtection READ canChangeProtection NOTIFY changed)
  Q_PROPERTY(int bedtimeHour READ bedtimeHour WRITE setBedtimeHour NOTIFY changed)
  Q_PROPERTY(int bedtimeMinute READ bedtimeMinute WRITE setBedtimeMinute NOTIFY changed)
  Q_PROPERTY(int wakeHour READ wakeHour WRITE setWakeHour NOTIFY changed)
  Q_PROPERTY(int wakeMinute READ wakeMinute WRITE setWakeMinute NOTIFY changed)
  Q_PROPERTY(bool lockEnabled READ lockEnabled WRITE setLockEnabled NOTIFY changed)
  Q_PROPERTY(int duration READ duration WRITE setDuration NOTIFY changed)
  Q_PROPERTY(QString bannerText READ bannerText NOTIFY changed)
  Q_PROPERTY(QString committedText READ committedText NOTIFY changed)
  Q_PROPERTY(QString lockMessage READ lockMessage NOTIFY changed)
  Q_PROPERTY(bool askingToLock READ askingToLock NOTIFY changed)
  Q_PROPERTY(bool keyConfigured READ keyConfigured NOTIFY changed)
  Q_PROPERTY(bool keyMounted READ keyMounted NOTIFY changed)
  Q_PROPERTY(QString keyStatusText READ keyStatusText NOTIFY changed)
  Q_PROPERTY(QString createKeyText READ createKeyText NOTIFY changed)
  Q_PROPERTY(QString message READ message NOTIFY changed)
  Q_PROPERTY(bool askingToReplace READ askingToReplace NOTIFY changed)
  Q_PROPERTY(Enforcement enforcement READ enforcement NOTIFY changed)
  Q_PROPERTY(QString enforcementLabel READ enforcementLabel NOTIFY changed)
  Q_PROPERTY(bool firewallEnabled READ firewallEnabled WRITE setFirewallEnabled NOTIFY changed)
  Q_PROPERTY(lunevra::HardnessRowValue sessionCover READ sessionCover NOTIFY changed)
  Q_PROPERTY(lunevra::HardnessRowValue backgroundEnforcer READ backgroundEnforcer NOTIFY changed)
  Q_PROPERTY(lunevra::HardnessRowValue firewallHelper READ firewallHelper NOTIFY changed)
  Q_PROPERTY(lunevra::HardnessRowValue physicalKey READ physicalKey NOTIFY changed)
  Q_PROPERTY(lunevra::HardnessRowValue endpointSecurity READ endpointSecurity NOTIFY changed)
  Q_PROPERTY(QStringList hourLabels READ hourLabels CONSTANT)
  Q_PROPERTY(QStringList minuteLabels READ minuteLabels CONSTANT)
  Q_PROPERTY(QStringList durationLabels READ durationLabels CONSTANT)
  /// The texts that never change, by their names.
  Q_PROPERTY(QVariant texts READ texts CONSTANT)
  /// What happens at bedtime: symbol and text of each.
  Q_PROPERTY(QVariantList bedtimeFacts READ bedtimeFacts CONSTANT)

 public:
  // NOLINTBEGIN(readability-identifier-naming): QML knows enumerators by their capital letter
  enum Enforcement { On, Approve, Enable };
  Q_ENUM(Enforcement)
  // NOLINTEND(readability-identifier-naming)

  SettingsBridge(const Host& host, ShutdownManager& engine, std::function<void()> dismiss);

  [[nodiscard]] SettingsModel& model() { return model_; }

  [[nodiscard]] bool committed() const { return values().isCommitted; }
  [[nodiscard]] bool canEditSchedule() const { return model_.canEditSchedule(); }
  [[nodiscard]] bool canChangeProtection() const { return model_.canChangeProtection(); }
  [[nodiscard]] int bedtimeHour() const { return int(schedule().blockStartHour); }
  [[nodiscard]] int bedtimeMinute() const { return int(schedule().blockStartMinute); }
  [[nodiscard]] int wakeHour() const { return int(schedule().wakeHour); }
  [[nodiscard]] int wakeMinute() const { return int(schedule().wakeMinute); }
  void setBedtimeHour(int hour) { edit(&Schedule::blockStartHour, hour); }
  void setBedtimeMinute(int minute) { edit(&Schedule::blockStartMinute, minute); }
  void setWakeHour(int hour) { edit(&Schedule::wakeHour, hour); }
  void setWakeMinute(int minute) { edit(&Schedule::wakeMinute, minute); }
  [[nodiscard]] bool lockEnabled() const { return values().isEnabled; }
  void setLockEnabled(bool isEnabled) { model_.setEnabled(isEnabled); }
  [[nodiscard]] int duration() const { return int(model_.lockDuration()); }
  void setDuration(int index) { model_.setLockDuration(LockDuration(index)); }
  [[nodiscard]] QString bannerText() const { return text(model_.bannerText()); }
  [[nodiscard]] QString committedText() const { return text(model_.committedText()); }
  [[nodiscard]] QString lockMessage() const { return text(model_.lockConfirmationMessage()); }
  [[nodiscard]] bool askingToLock() const { return model_.isShowingLockConfirmation(); }
  [[nodiscard]] bool keyConfigured() const { return values().isKeyConfigured; }
  [[nodiscard]] bool keyMounted() const { return values().isKeyMounted; }
  [[nodiscard]] QString keyStatusText() const { return text(model_.keyStatusText()); }
  [[nodiscard]] QString createKeyText() const { return text(model_.createKeyText()); }
  [[nodiscard]] QString message() const { return text(values().message); }
  [[nodiscard]] bool askingToReplace() const { return model_.isShowingReplaceKeyConfirmation(); }
  [[nodiscard]] Enforcement enforcement() const { return Enforcement(model_.enforcementControl()); }
  [[nodiscard]] QString enforcementLabel() const;
  [[nodiscard]] bool firewallEnabled() const { return values().dashboard.isFirewallEnabled; }
  void setFirewallEnabled(bool isEnabled) { model_.setFirewallEnabled(isEnabled); }
  [[nodiscard]] HardnessRowValue sessionCover() const;
  [[nodiscard]] HardnessRowValue backgroundEnforcer() const;
  [[nodiscard]] HardnessRowValue firewallHelper() const;
  [[nodiscard]] HardnessRowValue physicalKey() const;
  [[nodiscard]] HardnessRowValue endpointSecurity() const;
  [[nodiscard]] static QStringList hourLabels();
  [[nodiscard]] static QStringList minuteLabels();
  [[nodiscard]] static QStringList durationLabels();
  [[nodiscard]] static QVariant texts();
  [[nodiscard]] static QVariantList bedtimeFacts();

  /// Where a minute stands on the picker; -1 for one that it does not have.
  Q_INVOKABLE [[nodiscard]] static int minuteIndex(int minute);
  Q_INVOKABLE [[nodiscard]] static int minuteAt(int index);
  Q_INVOKABLE [[nodiscard]] static QString timeText(int hour, int minute);

  Q_INVOKABLE void dismiss() { model_.dismiss(); }
  Q_INVOKABLE void saveSchedule() { model_.saveSchedule(); }
  Q_INVOKABLE void askToLock() { model_.askToLock(); }
  Q_INVOKABLE void confirmLock() { model_.confirmCommitmentLock(); }
  Q_INVOKABLE void createKey() { model_.createKey(); }
  Q_INVOKABLE void confirmReplace() { model_.confirmReplaceKey(); }
  Q_INVOKABLE void cancelConfirmation() { model_.cancelConfirmation(); }
  Q_INVOKABLE void checkKey() { model_.checkKey(); }
  Q_INVOKABLE void perform(int action) { model_.perform(HardnessAction(action)); }
  /// What the control of the background enforcement does.
  Q_INVOKABLE void performEnforcement();

 signals:
  void changed();

 private:
  [[nodiscard]] const SettingsValues& values() const { return model_.values(); }
  [[nodiscard]] const Schedule& schedule() const { return model_.editedSchedule(); }
  [[nodiscard]] static QString text(const std::string& text) {
    return QString::fromStdString(text);
  }
  void edit(std::int64_t Schedule::*field, int value);

  SettingsModel model_;
  Registration observation_;
};

}  // namespace lunevra
