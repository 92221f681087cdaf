#pragma once

#include <array>
#include <string_view>

/// The interface that the firewall helper serves and the program calls: one-way operations, each
/// with a reply that comes at most once, on a thread of the connection.
namespace lunevra::firewall_helper_protocol {

struct Operation {
  std::string_view selector;
  /// Arguments and reply as both runtimes must agree on them.
  std::string_view typeEncoding;

  friend constexpr bool operator==(const Operation&, const Operation&) = default;
};

/// Replies with a `FirewallHelperStatus`.
inline constexpr Operation status{"statusWithReply:",
                                  R"(v24@0:8@?<v@?@"LunevraFirewallHelperStatus">16)"};

// The next three reply with success, and with a message that may be absent.

/// Domain texts, the end date, the release generation of the moment.
inline constexpr Operation startBlock{"startBlockWithDomains:until:generation:reply:",
                                      R"(v48@0:8@"NSArray"16@"NSDate"24q32@?<v@?B@"NSString">40)"};
/// The release generation after the release.
inline constexpr Operation clearBlock{"clearBlockWithGeneration:reply:",
                                      R"(v32@0:8q16@?<v@?B@"NSString">24)"};
/// The new end date.
inline constexpr Operation extendBlock{"extendBlockUntil:reply:",
                                       R"(v32@0:8@"NSDate"16@?<v@?B@"NSString">24)"};

/// Replies with yes or no.
inline constexpr Operation ping{"pingWithReply:", "v24@0:8@?<v@?B>16"};

/// In the order of declaration. The program itself calls `startBlock` and `clearBlock` only.
inline constexpr std::array operations{status, startBlock, clearBlock, extendBlock, ping};

}  // namespace lunevra::firewall_helper_protocol
