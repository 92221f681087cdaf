#pragma once

#include <functional>
#include <libsecret/secret.h>
#include <optional>
#include <string>

#include "platform/keychain.h"
#include "platform/linux/bounded_job.h"

namespace lunevra {

struct KeychainItemName {
  std::string service;
  std::string account;

  friend auto operator<=>(const KeychainItemName&, const KeychainItemName&) = default;
};

/// Generic-password items in the person's Secret Service: found by the attributes `service` and
/// `account`, their bytes kept as base64 text, for some services keep nothing else. Of several
/// items the one modified last counts. Never unlocks a collection and never shows a dialog.
///
/// Lives on one thread, on whose default context it hears of changes. Every operation connects
/// where necessary and takes no longer than its job.
class SecretServiceClient {
 public:
  enum class Reach {
    answered,
    absent,  // no bus, no such service on it, or none with a place for items
    silent,  // it does not answer, or not in a way that helps
  };
  struct Found {
    Reach reach = Reach::silent;
    std::optional<Bytes> value;
  };

  SecretServiceClient() = default;
  ~SecretServiceClient() { disconnect(); }
  SecretServiceClient(const SecretServiceClient&) = delete;
  SecretServiceClient& operator=(const SecretServiceClient&) = delete;

  [[nodiscard]] Found find(BoundedJob& job, const KeychainItemName& name);
  /// A keychain_status; nothing if the service is absent.
  [[nodiscard]] std::optional<std::int32_t> remove(BoundedJob& job, const KeychainItemName& name);
  [[nodiscard]] std::optional<std::int32_t> add(BoundedJob& job, const KeychainItemName& name,
                                                const Bytes& value);

  /// Something may have changed.
  std::function<void()> onChange;
  /// The service is gone.
  std::function<void()> onGone;

 private:
  [[nodiscard]] Reach connect(BoundedJob& job);
  [[nodiscard]] Reach openService(BoundedJob& job);
  /// For the length of an operation, during which the service may vanish.
  [[nodiscard]] ObjectHandle<SecretService> heldService() const;
  void watch();
  void disconnect();
  /// What an error means; forgets a session that can be of no further use.
  [[nodiscard]] Reach reachOf(const ErrorSlot& error);
  [[nodiscard]] std::optional<std::int32_t> statusOf(const ErrorSlot& error);

  ObjectHandle<GDBusConnection> connection_;
  ObjectHandle<SecretService> service_;
  guint signals_ = 0;
  guint nameWatch_ = 0;
};

}  // namespace lunevra
