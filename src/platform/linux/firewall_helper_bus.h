#pragma once

/// The firewall helper's interface on the system bus, under the service name
/// `com.lunevra.firewall`. packaging/com.lunevra.FirewallHelper.xml describes it in full. Each
/// operation is the method named by the first words of its selector; a date travels as seconds
/// since 1970-01-01 UTC (`d`), a generation as `x`, a status record as its archive (`a{sv}`, dates
/// again as `d`), and a message that may be absent as an array of no or one text (`as`).
namespace lunevra::firewall_helper_bus {

inline constexpr const char* objectPath = "/com/lunevra/firewall";
inline constexpr const char* interfaceName = "com.lunevra.FirewallHelper";

inline constexpr const char* startBlock = "StartBlock";  // as d x, answers b as
inline constexpr const char* clearBlock = "ClearBlock";  // x, answers b as

}  // namespace lunevra::firewall_helper_bus
