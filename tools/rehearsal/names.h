#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "engine/blocking_state.h"
#include "platform/presentation_options.h"
#include "platform/simulated/simulated_protection.h"
#include "rehearsal/world_text.h"

namespace lunevra::rehearsal {

[[nodiscard]] inline std::string stateName(BlockingState state) {
  switch (state) {
    case BlockingState::idle:
      return "idle";
    case BlockingState::warning:
      return "warning";
    case BlockingState::countdown:
      return "countdown";
    case BlockingState::blocking:
      return "blocking";
  }
  return {};
}

[[nodiscard]] inline std::string hexText(std::uint64_t number) {
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "0x%llX", static_cast<unsigned long long>(number));
  return text.data();
}

[[nodiscard]] inline std::string presentationText(PresentationOptions options) {
  return hexText(static_cast<std::uint32_t>(options));
}

[[nodiscard]] inline std::string requestText(const FirewallRequest& request,
                                             const Calendar& calendar) {
  const auto generation = " generation " + std::to_string(request.generation);
  if (request.kind == FirewallRequest::Kind::clear) return "clear" + generation;
  return "start " + describe(std::optional(request.until), calendar) + generation + " domains " +
         std::to_string(request.domainCount);
}

}  // namespace lunevra::rehearsal
