#include "platform/linux/helper_session.h"

#include <utility>

#include "platform/linux/firewall_helper_bus.h"

namespace lunevra {
namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
/// A helper may have to be started first, which the bus itself gives up after 25 seconds.
constexpr std::uint64_t setupPatience = 30'000'000;  // microseconds
constexpr std::uint64_t forever = UINT64_MAX;

bool isError(sd_bus_message* answer) {
  return sd_bus_message_is_method_error(answer, nullptr) != 0;
}

std::string errorText(sd_bus_message* answer) {
  const auto* const error = sd_bus_message_get_error(answer);
  return error->message != nullptr ? error->message : error->name;
}

/// An array of no or one text.
int readOptionalText(sd_bus_message* message, std::optional<std::string>& text) {
  int result = sd_bus_message_enter_container(message, 'a', "s");
  if (result < 0) return result;
  const char* first = nullptr;
  result = sd_bus_message_read_basic(message, 's', &first);
  if (result > 0) text = first;
  return result;
}

}  // namespace

HelperSession::HelperSession(sd_event* loop, HelperAddress address, std::function<void()> ended)
    : address_(std::move(address)), ended_(std::move(ended)) {
  int result = open(loop);
  if (result >= 0) result = watch();
  if (result >= 0)
    result = askBus<&HelperSession::takeStarted>("StartServiceByName", "su",
                                                 address_.serviceName.c_str(), 0U);
  if (result < 0) end("The message bus cannot be reached: " + busErrorText(result));
}

int HelperSession::open(sd_event* loop) {
  int result = startBus(address_.bus, bus_);
  if (result >= 0) result = sd_bus_attach_event(bus_.get(), loop, SD_EVENT_PRIORITY_NORMAL);
  if (result < 0) return result;
  const auto giveUp = [](sd_event_source*, std::uint64_t, void* session) {
    static_cast<HelperSession*>(session)->end("The helper did not answer in time.");
    return 0;
  };
  sd_event_source* timer = nullptr;
  result =
      sd_event_add_time_relative(loop, &timer, CLOCK_MONOTONIC, setupPatience, 0, giveUp, this);
  patience_.reset(timer);
  return result;
}

// The watch on the name is sent before its owner is asked for, so no change after the answer is
// missed.
int HelperSession::watch() {
  const auto ownerChanged = [](sd_bus_message* signal, void* context, sd_bus_error*) {
    auto& session = *static_cast<HelperSession*>(context);
    const char* name = nullptr;
    const char* previous = nullptr;
    if (sd_bus_message_read(signal, "ss", &name, &previous) > 0 && !session.owner_.empty() &&
        session.owner_ == previous)
      session.end("The helper has ended.");
    return 0;
  };
  const auto disconnected = [](sd_bus_message*, void* context, sd_bus_error*) {
    static_cast<HelperSession*>(context)->end("The message bus is gone.");
    return 0;
  };
  const auto match =
      "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
      address_.serviceName + "'";
  sd_bus_slot* slot = nullptr;
  int result =
      sd_bus_add_match_async(bus_.get(), &slot, match.c_str(), ownerChanged, nullptr, this);
  ownerWatch_.reset(slot);
  if (result < 0) return result;
  slot = nullptr;
  result = sd_bus_match_signal_async(bus_.get(), &slot, "org.freedesktop.DBus.Local",
                                     "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                                     "Disconnected", disconnected, nullptr, this);
  disconnectWatch_.reset(slot);
  return result;
}

/// Asks the bus itself; `next` gets what it answers.
template <HelperSession::Step next, class... Arguments>
int HelperSession::askBus(const char* member, const char* types, Arguments... arguments) {
  const auto answered = [](sd_bus_message* answer, void* context, sd_bus_error*) {
    (static_cast<HelperSession*>(context)->*next)(answer);
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_call_method_async(bus_.get(), &slot, busName, busPath, busName, member,
                                              answered, this, types, arguments...);
  step_.reset(slot);
  return result;
}

// A helper that nobody has to start may run all the same.
void HelperSession::takeStarted(sd_bus_message* answer) {
  if (isError(answer)) startFailure_ = errorText(answer);
  const int result =
      askBus<&HelperSession::takeOwner>("GetNameOwner", "s", address_.serviceName.c_str());
  if (result < 0) end(busErrorText(result));
}

void HelperSession::takeOwner(sd_bus_message* answer) {
  if (isError(answer)) return end(startFailure_.empty() ? errorText(answer) : startFailure_);
  const char* owner = nullptr;
  int result = sd_bus_message_read_basic(answer, 's', &owner);
  if (result > 0) owner_ = owner;
  if (result > 0)
    result = askBus<&HelperSession::takeUser>("GetConnectionUnixUser", "s", owner_.c_str());
  if (result < 0) end(busErrorText(result));
}

void HelperSession::takeUser(sd_bus_message* answer) {
  if (isError(answer)) return end(errorText(answer));
  std::uint32_t user = 0;
  const int result = sd_bus_message_read_basic(answer, 'u', &user);
  if (result < 0) return end(busErrorText(result));
  if (user != address_.user)
    return end("The name " + address_.serviceName + " is taken by a program of another user.");
  patience_.reset();
  isReady_ = true;
  for (auto& request : std::exchange(waiting_, {})) transmit(std::move(request));
}

void HelperSession::send(HelperRequest request) {
  if (!endDescription_.empty())
    request.errorHandler(endDescription_);
  else if (isReady_)
    transmit(std::move(request));
  else
    waiting_.push_back(std::move(request));
}

void HelperSession::transmit(HelperRequest request) {
  auto& call = calls_.emplace_back(Call{*this, std::move(request), nullptr});
  const int result = transmit(call);
  if (result >= 0) return;
  const auto failed = std::move(call.request);
  calls_.pop_back();
  failed.errorHandler(busErrorText(result));
}

// No time limit: a helper that never answers leaves its request open, as long as it is there.
int HelperSession::transmit(Call& call) {
  sd_bus_message* made = nullptr;
  int result = sd_bus_message_new_method_call(
      bus_.get(), &made, owner_.c_str(), firewall_helper_bus::objectPath,
      firewall_helper_bus::interfaceName, call.request.member);
  const BusMessage message(made);
  if (result >= 0) result = call.request.writeArguments(message.get());
  if (result < 0) return result;
  const auto answered = [](sd_bus_message* answer, void* context, sd_bus_error*) {
    auto& answeredCall = *static_cast<Call*>(context);
    answeredCall.session.takeReply(answeredCall, answer);
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  result = sd_bus_call_async(bus_.get(), &slot, message.get(), answered, &call, forever);
  call.slot.reset(slot);
  return result;
}

void HelperSession::takeReply(Call& call, sd_bus_message* answer) {
  const auto request = std::move(call.request);
  calls_.remove_if([&call](const Call& one) { return &one == &call; });
  if (isError(answer)) return request.errorHandler(errorText(answer));
  int success = 0;
  std::optional<std::string> message;
  int result = sd_bus_message_read_basic(answer, 'b', &success);
  if (result > 0) result = readOptionalText(answer, message);
  if (result < 0) return request.errorHandler("The helper's reply cannot be read.");
  request.reply(success != 0, std::move(message));
}

void HelperSession::end(const std::string& description) {
  if (!endDescription_.empty()) return;
  endDescription_ = description;
  patience_.reset();
  auto lost = std::exchange(waiting_, {});
  for (auto& call : calls_) lost.push_back(std::move(call.request));
  calls_.clear();
  if (bus_) sd_bus_close(bus_.get());
  ended_();  // first, so that whoever hears of the loss may already ask anew
  for (const auto& request : lost) request.errorHandler(description);
}

}  // namespace lunevra
