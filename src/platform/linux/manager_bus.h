#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "platform/linux/bus_handles.h"
#include "platform/localized_error.h"

namespace lunevra {

/// What went wrong on a message bus: the bus's own text, and the name by which programs know it.
class BusError : public LocalizedError {
 public:
  BusError(const std::string& name, const std::string& text) : LocalizedError(text), name_(name) {}
  [[nodiscard]] const std::string& name() const { return name_; }
  /// Whoever asked lacks the right, or would have to be asked for a password.
  [[nodiscard]] bool isForLackOfRights() const;

 private:
  std::string name_;
};

/// Asks the service manager on one message bus, and waits for its answers no longer than agreed. A
/// bus that let a question time out is left alone for a while, so that a hung one costs its wait
/// once and not at every question.
class ManagerBus {
 public:
  using Arguments = std::function<int(sd_bus_message*)>;  // appends; negative is a failure
  using Reader = std::function<int(sd_bus_message*)>;     // reads the answer; negative is a failure

  explicit ManagerBus(std::string address) : address_(std::move(address)) {}
  ~ManagerBus() = default;
  ManagerBus(const ManagerBus&) = delete;
  ManagerBus& operator=(const ManagerBus&) = delete;

  /// A connection for a few questions that belong together, with one limit for all of them.
  class Conversation {
   public:
    /// Throws BusError.
    Conversation(ManagerBus& bus, std::chrono::milliseconds limit);

    /// A method of the manager itself. Throws BusError.
    void ask(const char* member, const Arguments& arguments, const Reader& reader);
    /// A method of the manager without arguments, whose outcome nobody waits for. Throws BusError.
    void tell(const char* member);
    /// A property of one of the manager's objects. Throws BusError.
    void property(const std::string& path, const char* interface, const char* name,
                  const char* types, const Reader& reader);

   private:
    void ask(const std::string& path, const char* interface, const char* member,
             const Arguments& arguments, const Reader& reader);
    [[nodiscard]] BusMessage waitForAnswer(sd_bus_message* question);

    ManagerBus& owner_;
    std::chrono::steady_clock::time_point deadline_;
    BusHandle bus_;
  };

 private:
  std::string address_;
  std::chrono::steady_clock::time_point leftAloneUntil_{};
};

}  // namespace lunevra
