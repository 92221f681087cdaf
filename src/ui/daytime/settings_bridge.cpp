#include "ui/daytime/settings_bridge.h"

#include <utility>

#include "ui/settings/settings_texts.h"
#include "ui/settings/time_picker.h"

namespace lunevra {
namespace {

QString fromView(std::string_view text) {
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

HardnessRowValue valueOf(const HardnessRow& row) {
  return {.title = QString::fromStdString(row.title),
          .detail = QString::fromStdString(row.detail),
          .status = int(row.status),
          .actionLabel = QString::fromStdString(hardnessActionLabel(row.action)),
          .action = int(row.action)};
}

}  // namespace

SettingsBridge::SettingsBridge(const Host& host, ShutdownManager& engine,
                               std::function<void()> dismiss)
    : model_(host, engine, std::move(dismiss)) {
  observation_ = model_.observeChanges([this] { emit changed(); });
}

void SettingsBridge::edit(std::int64_t Schedule::*field, int value) {
  auto edited = schedule();
  edited.*field = value;
  model_.setEditedSchedule(edited);
}

QString SettingsBridge::enforcementLabel() const {
  return text(enforcementControlLabel(model_.enforcementControl()));
}

HardnessRowValue SettingsBridge::sessionCover() const {
  return valueOf(values().dashboard.sessionCover);
}

HardnessRowValue SettingsBridge::backgroundEnforcer() const {
  return valueOf(values().dashboard.backgroundEnforcer);
}

HardnessRowValue SettingsBridge::firewallHelper() const {
  return valueOf(values().dashboard.firewallHelper);
}

HardnessRowValue SettingsBridge::physicalKey() const {
  return valueOf(values().dashboard.physicalKey);
}

HardnessRowValue SettingsBridge::endpointSecurity() const {
  return valueOf(values().dashboard.endpointSecurity);
}

QStringList SettingsBridge::hourLabels() {
  QStringList labels;
  for (std::int64_t hour = 0; hour < hoursOnThePicker; ++hour) labels << text(hourLabel(hour));
  return labels;
}

QStringList SettingsBridge::minuteLabels() {
  QStringList labels;
  for (const auto minute : minutesOnThePicker) labels << text(minuteLabel(minute));
  return labels;
}

QStringList SettingsBridge::durationLabels() {
  QStringList labels;
  for (const auto duration : allLockDurations) labels << fromView(lockDurationText(duration));
  return labels;
}

int SettingsBridge::minuteIndex(int minute) {
  return lunevra::minuteIndex(minute).value_or(-1);
}

int SettingsBridge::minuteAt(int index) {
  return int(minutesOnThePicker.at(std::size_t(index)));
}

QString SettingsBridge::timeText(int hour, int minute) {
  return text(formatTime12Hour(hour, minute));
}

void SettingsBridge::performEnforcement() {
  switch (model_.enforcementControl()) {
    case EnforcementControl::on:
      return;
    case EnforcementControl::approve:
      return model_.perform(HardnessAction::openLoginItems);
    case EnforcementControl::enable:
      return model_.perform(HardnessAction::installAgent);
  }
}

QVariantList SettingsBridge::bedtimeFacts() {
  QVariantList facts;
  for (const auto& fact : settings_text::bedtimeFacts)
    facts << QVariantMap{{"symbol", fromView(fact.symbolName)}, {"text", fromView(fact.text)}};
  return facts;
}

QVariant SettingsBridge::texts() {
  namespace t = settings_text;
  constexpr std::pair<const char*, std::string_view> named[] = {
      {"title", t::title},
      {"tagline", t::tagline},
      {"promise", t::promise},
      {"promiseDetail", t::promiseDetail},
      {"keySection", t::keySection},
      {"scheduleSection", t::scheduleSection},
      {"protectionSection", t::protectionSection},
      {"dashboardSection", t::dashboardSection},
      {"commitmentSection", t::commitmentSection},
      {"bedtimeSection", t::bedtimeSection},
      {"connectedBadge", t::connectedBadge},
      {"keyExplanation", t::keyExplanation},
      {"checkKey", t::checkKey},
      {"fingerprintNote", t::fingerprintNote},
      {"bedtimeRow", t::bedtimeRow},
      {"wakeRow", t::wakeRow},
      {"hourPicker", t::hourPicker},
      {"minutePicker", t::minutePicker},
      {"saveSchedule", t::saveSchedule},
      {"enableSwitch", t::enableSwitch},
      {"enableDetail", t::enableDetail},
      {"enforcement", t::enforcement},
      {"enforcementDetail", t::enforcementDetail},
      {"dashboardIntroduction", t::dashboardIntroduction},
      {"firewallSwitch", t::firewallSwitch},
      {"dashboardNote", t::dashboardNote},
      {"bannerTitle", t::bannerTitle},
      {"commitmentInvitation", t::commitmentInvitation},
      {"durationPicker", t::durationPicker},
      {"lockSettings", t::lockSettings},
      {"committedTitle", t::committedTitle},
      {"cancel", t::cancel},
      {"confirmLockTitle", t::confirmLockTitle},
      {"replaceKeyTitle", t::replaceKeyTitle},
      {"replaceKeyMessage", t::replaceKeyMessage},
      {"replaceKeyConfirm", t::replaceKeyConfirm},
  };
  QVariantMap texts;
  for (const auto& [name, text] : named) texts.insert(name, fromView(text));
  return texts;
}

}  // namespace lunevra
