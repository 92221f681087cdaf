#include "rehearsal/settings_rows.h"

#include "ui/settings/settings_model.h"
#include "ui/settings/settings_texts.h"
#include "ui/settings/time_picker.h"

namespace lunevra::rehearsal {
namespace {

namespace text = settings_text;

/// Puts the rows of the settings window down, section by section.
class SettingsWriter {
 public:
  explicit SettingsWriter(const SettingsModel& model) : model_(model) {}

  void writeWindow() {
    writeHead();
    writeKey();
    writeSchedule();
    writeProtection();
    writeTitle(text::dashboardSection, "shield.checkerboard");
    writeDashboard();
    writeCommitment();
    writeBedtime();
  }
  void writeDashboard();
  [[nodiscard]] std::vector<std::string> takeRows() { return std::move(rows_); }

 private:
  void write(std::string_view row, std::initializer_list<std::string_view> remarks = {}) {
    rows_.push_back(annotated(row, remarks));
  }
  void writeTitle(std::string_view title, std::string_view symbolName) {
    write("---");
    write(title, {symbolName});
  }
  void writeHead();
  void writeKey();
  void writeSchedule();
  void writeTime(std::string_view title, std::int64_t hour, std::int64_t minute);
  void writeProtection();
  void writeHardness(const HardnessRow& row);
  void writeCommitment();
  void writeBedtime();
  [[nodiscard]] std::string_view ifFrozen() const {
    return model_.canChangeProtection() ? "" : "disabled";
  }

  const SettingsModel& model_;
  std::vector<std::string> rows_;
};

void SettingsWriter::writeHead() {
  write(text::title);
  write(text::tagline);
  write("---");
  write(text::promise, {"lock.shield.fill"});
  write(text::promiseDetail);
  if (!model_.values().isCommitted) return;
  write("---");
  write(text::bannerTitle, {"lock.fill"});
  write(model_.bannerText());
}

void SettingsWriter::writeKey() {
  const auto& values = model_.values();
  writeTitle(text::keySection, "externaldrive.fill");
  write(model_.keyStatusText(),
        {values.isKeyConfigured ? "checkmark.seal.fill" : "exclamationmark.triangle.fill",
         values.isKeyConfigured ? "green" : "orange"});
  if (values.isKeyMounted) write(text::connectedBadge, {"green"});
  write(text::keyExplanation);
  write(model_.createKeyText(), {"key.fill", "button", ifFrozen()});
  write(text::checkKey, {"arrow.clockwise", "button"});
  write(values.message);
  if (values.isKeyConfigured) write(text::fingerprintNote, {"checkmark.shield.fill", "green"});
}

void SettingsWriter::writeSchedule() {
  const auto& schedule = model_.editedSchedule();
  writeTitle(text::scheduleSection, "moon.fill");
  writeTime(text::bedtimeRow, schedule.blockStartHour, schedule.blockStartMinute);
  writeTime(text::wakeRow, schedule.wakeHour, schedule.wakeMinute);
  write(text::saveSchedule, {"button", ifFrozen()});
}

void SettingsWriter::writeTime(std::string_view title, std::int64_t hour, std::int64_t minute) {
  const auto minuteEntry = minuteIndex(minute) ? minuteLabel(minute) : "no minute";
  write(std::string(title) + "  " + formatTime12Hour(hour, minute),
        {hourLabel(hour), minuteEntry, model_.canEditSchedule() ? "" : "disabled"});
}

void SettingsWriter::writeProtection() {
  writeTitle(text::protectionSection, "lock.shield.fill");
  write(text::enableSwitch, {onOff(model_.values().isEnabled), ifFrozen()});
  write(text::enableDetail);
  write("---");
  const auto control = model_.enforcementControl();
  const bool isOn = control == EnforcementControl::on;
  write(text::enforcement);
  write(text::enforcementDetail);
  write(enforcementControlLabel(control),
        {isOn ? "checkmark.circle.fill" : "", isOn ? "green" : "button"});
}

void SettingsWriter::writeDashboard() {
  const auto& dashboard = model_.values().dashboard;
  write(text::dashboardIntroduction);
  writeHardness(dashboard.sessionCover);
  writeHardness(dashboard.backgroundEnforcer);
  writeHardness(dashboard.firewallHelper);
  write(text::firewallSwitch, {onOff(dashboard.isFirewallEnabled)});
  writeHardness(dashboard.physicalKey);
  writeHardness(dashboard.endpointSecurity);
  write(text::dashboardNote);
}

std::string_view statusName(HardnessStatus status) {
  switch (status) {
    case HardnessStatus::green:
      return "green";
    case HardnessStatus::yellow:
      return "yellow";
    case HardnessStatus::red:
      return "red";
  }
  return {};
}

void SettingsWriter::writeHardness(const HardnessRow& row) {
  const auto label = hardnessActionLabel(row.action);
  write(row.title + "  " + row.detail,
        {statusName(row.status), label.empty() ? "" : label + " button"});
}

void SettingsWriter::writeCommitment() {
  writeTitle(text::commitmentSection, "calendar.badge.lock");
  if (model_.values().isCommitted) {
    write(text::committedTitle, {"lock.fill", "orange"});
    write(model_.committedText());
    return;
  }
  write(text::commitmentInvitation);
  write(std::string(text::durationPicker) + "  " +
        std::string(lockDurationText(model_.lockDuration())));
  write(text::lockSettings, {"lock.fill", "button"});
}

void SettingsWriter::writeBedtime() {
  writeTitle(text::bedtimeSection, "info.circle.fill");
  for (const auto& fact : text::bedtimeFacts) write(fact.text, {fact.symbolName});
}

}  // namespace

std::string annotated(std::string_view text, std::initializer_list<std::string_view> remarks) {
  std::string list;
  for (const auto remark : remarks) {
    if (remark.empty()) continue;
    if (!list.empty()) list += ", ";
    list += remark;
  }
  return std::string(text) + (list.empty() ? "" : "  [" + list + "]");
}

std::string_view onOff(bool isOn) {
  return isOn ? "on" : "off";
}

std::vector<std::string> dashboardRows(Night& night) {
  const SettingsModel model(night.computer().host(), night.engine(), {});
  SettingsWriter writer(model);
  writer.writeDashboard();
  return writer.takeRows();
}

std::vector<std::string> settingsRows(Night& night) {
  SettingsModel model(night.computer().host(), night.engine(), {});
  model.copySchedule();
  SettingsWriter writer(model);
  writer.writeWindow();
  return writer.takeRows();
}

}  // namespace lunevra::rehearsal
