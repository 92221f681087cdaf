#include "platform/linux/agent_start.h"

#include <cstdlib>

namespace lunevra {

bool takeAgentStart() {
  constexpr const char* variable = "LUNEVRA_STARTED_BY_AGENT";
  const bool isAgentStart = std::getenv(variable) != nullptr;
  ::unsetenv(variable);
  return isAgentStart;
}

}  // namespace lunevra
