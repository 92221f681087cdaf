#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "platform/linux/secret_service_client.h"

namespace lunevra {

/// The person's Secret Service for a caller who must not wait: asked on a thread of its own, which
/// keeps the last answer about every item that was ever looked for and asks again when the service
/// says that something changed, appears, or did not answer the last time. Where the service is
/// gone, locked or silent when asked there is no item. Main thread only.
class SecretServiceKeychain {
 public:
  SecretServiceKeychain();
  ~SecretServiceKeychain();
  SecretServiceKeychain(const SecretServiceKeychain&) = delete;
  SecretServiceKeychain& operator=(const SecretServiceKeychain&) = delete;

  /// The last answer. Only the first question about an item waits for one, a fifth of a second.
  [[nodiscard]] std::optional<Bytes> find(const KeychainItemName& name) const;
  /// A keychain_status within two seconds; nothing if there is no service that takes items.
  [[nodiscard]] std::optional<std::int32_t> remove(const KeychainItemName& name);
  [[nodiscard]] std::optional<std::int32_t> add(const KeychainItemName& name, const Bytes& value);

 private:
  using Status = std::optional<std::int32_t>;
  /// Shared by the two threads that may lose interest in it at different times.
  struct Change {
    std::function<Status(BoundedJob&)> make;
    KeychainItemName name;
    std::optional<Status> result;
    bool isAbandoned = false;
  };

  void post(std::function<void()> work) const;
  [[nodiscard]] Status carryOut(const KeychainItemName& name,
                                std::function<Status(BoundedJob&)> make);

  // On the thread.
  void serve();
  void makeChange();
  void refresh();
  void refreshAfter(std::chrono::milliseconds delay);
  void keep(const KeychainItemName& name, std::optional<Bytes> value);
  void forgetAnswers();

  GlibHandle<GMainContext> context_;
  std::unique_ptr<SecretServiceClient> client_;
  BoundedJob* job_ = nullptr;  // the running one
  std::vector<std::shared_ptr<Change>> changes_;
  GlibHandle<GSource> refreshTimer_;
  bool isRefreshDue_ = false;
  bool isStopped_ = false;

  mutable std::mutex mutex_;
  mutable std::condition_variable news_;
  // An item that was asked for and has no answer yet is a key without a value.
  mutable std::map<KeychainItemName, std::optional<std::optional<Bytes>>> answers_;

  std::optional<std::thread> thread_;
};

}  // namespace lunevra
