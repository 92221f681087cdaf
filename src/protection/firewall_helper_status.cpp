#include "protection/firewall_helper_status.h"

#include <string>

#include "platform/localized_error.h"

namespace lunevra {
namespace {

constexpr std::string_view isActiveKey = "isActive";
constexpr std::string_view blockedUntilKey = "blockedUntil";
constexpr std::string_view domainCountKey = "domainCount";
constexpr std::string_view lastHonoredGenerationKey = "lastHonoredGeneration";
constexpr std::string_view anchorLoadedKey = "anchorLoaded";

// Secure coding: values are taken only from an archive of the class that is expected.
const KeyedArchive& ofThisClass(const KeyedArchive& archive) {
  if (archive.className() != FirewallHelperStatus::className)
    throw LocalizedError("The firewall helper's status is of the unknown class " +
                         archive.className() + ".");
  return archive;
}

}  // namespace

FirewallHelperStatus::FirewallHelperStatus(bool isActive, std::optional<Instant> blockedUntil,
                                           std::int64_t domainCount,
                                           std::int64_t lastHonoredGeneration, bool anchorLoaded)
    : isActive_(isActive),
      blockedUntil_(blockedUntil),
      domainCount_(domainCount),
      lastHonoredGeneration_(lastHonoredGeneration),
      anchorLoaded_(anchorLoaded) {}

FirewallHelperStatus::FirewallHelperStatus(const KeyedArchive& archive)
    : FirewallHelperStatus(
          ofThisClass(archive).decodeFlag(isActiveKey), archive.decodeDate(blockedUntilKey),
          archive.decodeInteger(domainCountKey), archive.decodeInteger(lastHonoredGenerationKey),
          archive.decodeFlag(anchorLoadedKey)) {}

KeyedArchive FirewallHelperStatus::archived() const {
  KeyedArchive archive{std::string(className)};
  archive.encodeFlag(isActiveKey, isActive_);
  archive.encodeDate(blockedUntilKey, blockedUntil_);
  archive.encodeInteger(domainCountKey, domainCount_);
  archive.encodeInteger(lastHonoredGenerationKey, lastHonoredGeneration_);
  archive.encodeFlag(anchorLoadedKey, anchorLoaded_);
  return archive;
}

}  // namespace lunevra
