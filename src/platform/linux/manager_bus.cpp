#include "platform/linux/manager_bus.h"

namespace lunevra {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr const char* managerName = "org.freedesktop.systemd1";
constexpr const char* managerPath = "/org/freedesktop/systemd1";
constexpr const char* managerInterface = "org.freedesktop.systemd1.Manager";
constexpr std::chrono::seconds pauseAfterSilence{10};

void check(int result) {
  if (result < 0) throw BusError("", busErrorText(result));
}

[[noreturn]] void giveUp() {
  throw BusError(SD_BUS_ERROR_TIMEOUT, "The service manager does not answer.");
}

}  // namespace

bool BusError::isForLackOfRights() const {
  return name_ == SD_BUS_ERROR_ACCESS_DENIED ||
         name_ == SD_BUS_ERROR_INTERACTIVE_AUTHORIZATION_REQUIRED;
}

ManagerBus::Conversation::Conversation(ManagerBus& bus, std::chrono::milliseconds limit)
    : owner_(bus), deadline_(steady_clock::now() + limit) {
  if (steady_clock::now() < bus.leftAloneUntil_) giveUp();
  check(startBus(bus.address_, bus_));
}

void ManagerBus::Conversation::ask(const char* member, const Arguments& arguments,
                                   const Reader& reader) {
  ask(managerPath, managerInterface, member, arguments, reader);
}

void ManagerBus::Conversation::tell(const char* member) {
  sd_bus_message* made = nullptr;
  check(sd_bus_message_new_method_call(bus_.get(), &made, managerName, managerPath,
                                       managerInterface, member));
  const BusMessage message(made);
  check(sd_bus_message_set_expect_reply(made, 0));
  check(sd_bus_send(bus_.get(), made, nullptr));
}

void ManagerBus::Conversation::property(const std::string& path, const char* interface,
                                        const char* name, const char* types, const Reader& reader) {
  ask(
      path, "org.freedesktop.DBus.Properties", "Get",
      [&](sd_bus_message* question) {
        return sd_bus_message_append(question, "ss", interface, name);
      },
      [&](sd_bus_message* answer) {
        const int result = sd_bus_message_enter_container(answer, 'v', types);
        return result >= 0 ? reader(answer) : result;
      });
}

void ManagerBus::Conversation::ask(const std::string& path, const char* interface,
                                   const char* member, const Arguments& arguments,
                                   const Reader& reader) {
  sd_bus_message* made = nullptr;
  check(sd_bus_message_new_method_call(bus_.get(), &made, managerName, path.c_str(), interface,
                                       member));
  const BusMessage question(made);
  check(arguments(made));
  const auto answer = waitForAnswer(made);
  const auto* const error = sd_bus_message_get_error(answer.get());
  if (error != nullptr)
    throw BusError(error->name, error->message != nullptr ? error->message : error->name);
  check(reader(answer.get()));
}

// The library's own blocking call waits without limit while a connection is being made.
BusMessage ManagerBus::Conversation::waitForAnswer(sd_bus_message* question) {
  BusMessage answer;
  const auto keep = [](sd_bus_message* message, void* place, sd_bus_error*) {
    static_cast<BusMessage*>(place)->reset(sd_bus_message_ref(message));
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  check(sd_bus_call_async(bus_.get(), &slot, question, keep, &answer, UINT64_MAX));
  const BusSlot pending(slot);
  while (!answer) {
    const int processed = sd_bus_process(bus_.get(), nullptr);
    check(processed);
    if (answer || processed > 0) continue;
    const auto left = std::chrono::duration_cast<microseconds>(deadline_ - steady_clock::now());
    if (left <= microseconds::zero()) {
      owner_.leftAloneUntil_ = steady_clock::now() + pauseAfterSilence;
      giveUp();
    }
    const int waited = sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(left.count()));
    if (waited != -EINTR) check(waited);
  }
  return answer;
}

}  // namespace lunevra
