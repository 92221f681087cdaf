#pragma once

#include <array>
#include <string_view>

/// The texts of the settings window that never change.
namespace lunevra::settings_text {

inline constexpr std::string_view title = "Lunevra";
inline constexpr std::string_view tagline = "A strict overnight computer lock";
inline constexpr std::string_view promise =
    "No passwords. No AI approval. No software escape button.";
inline constexpr std::string_view promiseDetail =
    "At bedtime, every display is covered until morning. The optional physical USB key is the only "
    "early-release path.";

inline constexpr std::string_view keySection = "Physical Escape Key";
inline constexpr std::string_view scheduleSection = "Nightly Schedule";
inline constexpr std::string_view protectionSection = "Protection";
inline constexpr std::string_view dashboardSection = "Hardness Dashboard";
inline constexpr std::string_view commitmentSection = "Commitment Lock";
inline constexpr std::string_view bedtimeSection = "What Happens at Bedtime";

inline constexpr std::string_view connectedBadge = "CONNECTED";
inline constexpr std::string_view keyExplanation =
    "Create the key on a USB flash drive, eject it, and give it to a trusted friend. Inserting "
    "that exact drive during a lock releases this Mac until the scheduled wake time.";
inline constexpr std::string_view checkKey = "Check";
inline constexpr std::string_view fingerprintNote =
    "Lunevra stores only a cryptographic fingerprint in Keychain. Keep the USB key file private "
    "and do not copy it.";

inline constexpr std::string_view bedtimeRow = "Freeze computer at";
inline constexpr std::string_view wakeRow = "Release computer at";
inline constexpr std::string_view hourPicker = "Hour";
inline constexpr std::string_view minutePicker = "Minute";
inline constexpr std::string_view saveSchedule = "Save Schedule";

inline constexpr std::string_view enableSwitch = "Enable nightly computer lock";
inline constexpr std::string_view enableDetail =
    "When enabled, the lock starts automatically at bedtime.";
inline constexpr std::string_view enforcement = "Background enforcement";
inline constexpr std::string_view enforcementDetail =
    "Relaunches Lunevra if it is closed or force-killed, and starts it after login.";

inline constexpr std::string_view dashboardIntroduction =
    "What's currently protecting your bedtime. Green means the layer is armed; yellow means it "
    "needs your approval; red means it isn't installed. Each layer is additive — bedtime still "
    "works if only the top ones are green.";
inline constexpr std::string_view firewallSwitch = "Enable network firewall at bedtime";
inline constexpr std::string_view dashboardNote =
    "macOS Recovery, another administrator account, MDM, and physical access remain outside any "
    "user-installed app's control. Lunevra fails closed rather than fighting the OS.";

inline constexpr std::string_view bannerTitle = "Settings Locked";
inline constexpr std::string_view commitmentInvitation =
    "Optionally freeze the schedule and protection settings for several days so tomorrow-you "
    "cannot weaken tonight's plan.";
inline constexpr std::string_view durationPicker = "Duration";
inline constexpr std::string_view lockSettings = "Lock Settings";
inline constexpr std::string_view committedTitle = "Settings are locked";

inline constexpr std::string_view cancel = "Cancel";
inline constexpr std::string_view confirmLockTitle = "Enable Commitment Lock?";
inline constexpr std::string_view replaceKeyTitle = "Replace physical key?";
inline constexpr std::string_view replaceKeyMessage =
    "Anyone still holding the current USB key will no longer be able to release the lock. If they "
    "are your accountability partner, retrieve the drive from them before replacing it.";
inline constexpr std::string_view replaceKeyConfirm = "Replace Key";

struct BedtimeFact {
  std::string_view symbolName;
  std::string_view text;
};

inline constexpr std::array bedtimeFacts{
    BedtimeFact{"display.2", "Lunevra covers every connected display and every desktop Space."},
    BedtimeFact{"keyboard.badge.ellipsis",
                "App switching, Force Quit, hiding, cursor-location assistance, and normal "
                "termination are suppressed."},
    BedtimeFact{"arrow.counterclockwise",
                "A launchd watchdog relaunches the scheduler if it is closed or force-killed while "
                "protection is enabled."},
    BedtimeFact{"externaldrive.fill",
                "The matching USB key releases only the current night; otherwise wake time is "
                "automatic."},
    BedtimeFact{"exclamationmark.shield.fill",
                "Keep Background enforcement approved. macOS Recovery, another administrator "
                "account, MDM, or SSH can defeat any user-installed app — Lunevra fails closed "
                "there rather than fighting the OS."},
};

}  // namespace lunevra::settings_text
