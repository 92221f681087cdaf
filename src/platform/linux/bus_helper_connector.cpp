#include "platform/linux/bus_helper_connector.h"

#include <utility>

#include "platform/linux/event_thread.h"
#include "platform/linux/firewall_helper_bus.h"
#include "platform/linux/helper_session.h"
#include "platform/localized_error.h"

namespace lunevra {
namespace {

int appendTexts(sd_bus_message* message, const std::vector<std::string>& texts) {
  int result = sd_bus_message_open_container(message, 'a', "s");
  for (const auto& text : texts)
    if (result >= 0) result = sd_bus_message_append_basic(message, 's', text.c_str());
  return result >= 0 ? sd_bus_message_close_container(message) : result;
}

/// The near end: hands everything to the session on the bus's thread.
class BusHelperConnection : public HelperConnection, public FirewallHelperProxy {
 public:
  BusHelperConnection(EventThread& thread, HelperAddress address, std::function<void()> ended)
      : thread_(thread) {
    thread_.async([session = session_, address = std::move(address),
                   ended = std::move(ended)](sd_event* loop) {
      *session = std::make_unique<HelperSession>(loop, address, ended);
    });
  }
  // The session may be in the middle of telling that it has ended: it goes in a later turn.
  ~BusHelperConnection() override {
    thread_.async([session = std::move(session_)](sd_event*) { session->reset(); });
  }
  BusHelperConnection(const BusHelperConnection&) = delete;
  BusHelperConnection& operator=(const BusHelperConnection&) = delete;

  [[nodiscard]] FirewallHelperProxy* remoteObjectProxy(
      std::function<void(const std::string&)> errorHandler) override {
    errorHandler_ = std::move(errorHandler);
    return this;
  }

  void startBlock(const std::vector<std::string>& domains, Instant until, std::int64_t generation,
                  HelperReply reply) override {
    send(
        firewall_helper_bus::startBlock,
        [domains, until, generation](sd_bus_message* message) {
          const int result = appendTexts(message, domains);
          return result >= 0
                     ? sd_bus_message_append(message, "dx", until.secondsSince1970, generation)
                     : result;
        },
        std::move(reply));
  }

  void clearBlock(std::int64_t generation, HelperReply reply) override {
    send(
        firewall_helper_bus::clearBlock,
        [generation](sd_bus_message* message) {
          return sd_bus_message_append(message, "x", generation);
        },
        std::move(reply));
  }

 private:
  void send(const char* member, std::function<int(sd_bus_message*)> writeArguments,
            HelperReply reply) {
    thread_.async(
        [session = session_, request = HelperRequest{member, std::move(writeArguments),
                                                     std::move(reply), errorHandler_}](sd_event*) {
          if (*session) (*session)->send(request);
        });
  }

  EventThread& thread_;
  /// Filled, used and emptied on the bus's thread only.
  std::shared_ptr<std::unique_ptr<HelperSession>> session_ =
      std::make_shared<std::unique_ptr<HelperSession>>();
  std::function<void(const std::string&)> errorHandler_;
};

/// What is left to hand out when there can be no thread.
class DeadConnection : public HelperConnection {
 public:
  [[nodiscard]] FirewallHelperProxy* remoteObjectProxy(
      std::function<void(const std::string&)> /*errorHandler*/) override {
    return nullptr;
  }
};

}  // namespace

BusHelperConnector::BusHelperConnector(std::string busAddress, uid_t helperUser)
    : busAddress_(std::move(busAddress)), helperUser_(helperUser) {}

BusHelperConnector::~BusHelperConnector() = default;

std::shared_ptr<HelperConnection> BusHelperConnector::connectPrivileged(
    std::string_view serviceName, std::function<void()> ended) {
  try {
    if (!thread_) thread_ = std::make_unique<EventThread>();
  } catch (const LocalizedError&) {
    return std::make_shared<DeadConnection>();  // its user is told that nobody can be reached
  }
  return std::make_shared<BusHelperConnection>(
      *thread_, HelperAddress{busAddress_, std::string(serviceName), helperUser_},
      std::move(ended));
}

}  // namespace lunevra
