#include "platform/linux/secret_service_client.h"

#include <string_view>
#include <utility>

#include "platform/foundation/base64.h"
#include "platform/linux/keychain_status.h"
#include "platform/linux/quiet_secret_service.h"

namespace lunevra {
namespace {

constexpr const char* busName = "org.freedesktop.secrets";

using Done = GAsyncReadyCallback;

const SecretSchema& schema() {
  static const SecretSchema value{"com.lunevra.GenericPassword",
                                  SECRET_SCHEMA_DONT_MATCH_NAME,
                                  {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                   {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                   {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                  0,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr,
                                  nullptr};
  return value;
}

GlibHandle<GHashTable> attributesOf(const KeychainItemName& name) {
  return GlibHandle<GHashTable>(secret_attributes_build(&schema(), "service", name.service.c_str(),
                                                        "account", name.account.c_str(), nullptr));
}

/// A locked item has no secret to show.
std::optional<Bytes> valueOf(SecretItem* item) {
  auto* const secret = secret_item_get_secret(item);
  if (secret == nullptr) return std::nullopt;
  gsize length = 0;
  const auto* const text = secret_value_get(secret, &length);
  auto bytes = base64Decode(std::string_view(text, length));
  secret_value_unref(secret);
  return bytes;
}

std::optional<Bytes> newestValue(GList* items) {
  std::optional<Bytes> newest;
  guint64 newestTime = 0;
  for (auto* entry = items; entry != nullptr; entry = entry->next) {
    auto* const item = static_cast<SecretItem*>(entry->data);
    auto value = valueOf(item);
    if (!value || (newest && secret_item_get_modified(item) <= newestTime)) continue;
    newest = std::move(value);
    newestTime = secret_item_get_modified(item);
  }
  return newest;
}

bool isMissingService(const GError& error) {
  if (error.domain != G_DBUS_ERROR) return false;
  // All that the bus answers when it can find or start nobody.
  return error.code == G_DBUS_ERROR_SERVICE_UNKNOWN ||
         error.code == G_DBUS_ERROR_NAME_HAS_NO_OWNER ||
         (error.code >= G_DBUS_ERROR_SPAWN_EXEC_FAILED &&
          error.code <= G_DBUS_ERROR_SPAWN_NO_MEMORY);
}

bool isTimeout(const GError& error) {
  return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CANCELLED) ||
         g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
}

}  // namespace

SecretServiceClient::Found SecretServiceClient::find(BoundedJob& job,
                                                     const KeychainItemName& name) {
  if (const auto reach = connect(job); reach != Reach::answered) return {reach, std::nullopt};
  const auto service = heldService();
  const auto attributes = attributesOf(name);
  ErrorSlot error;
  auto* const items = secret_service_search_finish(
      service.get(), job.run([&](GCancellable* cancellable, Done done, gpointer data) {
        const auto flags =
            static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
        secret_service_search(service.get(), &schema(), attributes.get(), flags, cancellable, done,
                              data);
      }),
      error.out());
  if (error.get() != nullptr) return {reachOf(error), std::nullopt};
  Found found{Reach::answered, newestValue(items)};
  g_list_free_full(items, g_object_unref);
  return found;
}

std::optional<std::int32_t> SecretServiceClient::remove(BoundedJob& job,
                                                        const KeychainItemName& name) {
  if (const auto reach = connect(job); reach != Reach::answered)
    return reach == Reach::absent ? std::nullopt : std::optional(keychain_status::notAvailable);
  const auto service = heldService();
  const auto attributes = attributesOf(name);
  ErrorSlot error;
  const bool isRemoved =
      secret_service_clear_finish(service.get(),
                                  job.run([&](GCancellable* cancellable, Done done, gpointer data) {
                                    secret_service_clear(service.get(), &schema(), attributes.get(),
                                                         cancellable, done, data);
                                  }),
                                  error.out()) != FALSE;
  if (error.get() != nullptr) return statusOf(error);
  return isRemoved ? keychain_status::success : keychain_status::itemNotFound;
}

std::optional<std::int32_t> SecretServiceClient::add(BoundedJob& job, const KeychainItemName& name,
                                                     const Bytes& value) {
  if (const auto reach = connect(job); reach != Reach::answered)
    return reach == Reach::absent ? std::nullopt : std::optional(keychain_status::notAvailable);
  const auto service = heldService();
  ErrorSlot error;
  const ObjectHandle<SecretCollection> collection(secret_collection_for_alias_finish(
      job.run([&](GCancellable* cancellable, Done done, gpointer data) {
        secret_collection_for_alias(service.get(), SECRET_COLLECTION_DEFAULT,
                                    SECRET_COLLECTION_NONE, cancellable, done, data);
      }),
      error.out()));
  if (error.get() != nullptr) return statusOf(error);
  if (collection == nullptr) return std::nullopt;  // making one would mean to ask the person
  if (secret_collection_get_locked(collection.get()) != FALSE)
    return keychain_status::interactionNotAllowed;

  const auto attributes = attributesOf(name);
  const auto text = base64Encode(value);
  auto* const secret =
      secret_value_new(text.c_str(), static_cast<gssize>(text.size()), "text/plain");
  const ObjectHandle<SecretItem> item(
      secret_item_create_finish(job.run([&](GCancellable* cancellable, Done done, gpointer data) {
        secret_item_create(collection.get(), &schema(), attributes.get(), "Lunevra", secret,
                           SECRET_ITEM_CREATE_REPLACE, cancellable, done, data);
      }),
                                error.out()));
  secret_value_unref(secret);
  return error.get() != nullptr ? statusOf(error) : keychain_status::success;
}

SecretServiceClient::Reach SecretServiceClient::connect(BoundedJob& job) {
  if (connection_ != nullptr && g_dbus_connection_is_closed(connection_.get()) != FALSE)
    disconnect();
  if (service_ != nullptr) return Reach::answered;
  if (connection_ == nullptr) {
    ErrorSlot error;
    connection_.reset(
        g_bus_get_finish(job.run([](GCancellable* cancellable, Done done, gpointer data) {
          g_bus_get(G_BUS_TYPE_SESSION, cancellable, done, data);
        }),
                         error.out()));
    if (connection_ == nullptr) return isTimeout(*error.get()) ? Reach::silent : Reach::absent;
    if (g_dbus_connection_is_closed(connection_.get()) != FALSE) {
      connection_.reset();  // GLib hands out the old one until everybody has let go of it
      return Reach::silent;
    }
    // By GLib's own ways a process ends with its bus; a lock does not.
    g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
    watch();
  }
  return openService(job);
}

SecretServiceClient::Reach SecretServiceClient::openService(BoundedJob& job) {
  ErrorSlot error;
  service_.reset(
      secret_service_open_finish(job.run([](GCancellable* cancellable, Done done, gpointer data) {
        secret_service_open(quietSecretServiceType(), nullptr, SECRET_SERVICE_OPEN_SESSION,
                            cancellable, done, data);
      }),
                                 error.out()));
  return service_ != nullptr ? Reach::answered : reachOf(error);
}

ObjectHandle<SecretService> SecretServiceClient::heldService() const {
  return ObjectHandle<SecretService>(
      static_cast<SecretService*>(g_object_ref(static_cast<gpointer>(service_.get()))));
}

void SecretServiceClient::watch() {
  // Services differ in what they announce, so that any word of theirs is a reason to look.
  const auto heard = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                        GVariant*,
                        gpointer self) { static_cast<SecretServiceClient*>(self)->onChange(); };
  signals_ =
      g_dbus_connection_signal_subscribe(connection_.get(), busName, nullptr, nullptr, nullptr,
                                         nullptr, G_DBUS_SIGNAL_FLAGS_NONE, heard, this, nullptr);
  const auto appeared = [](GDBusConnection*, const gchar*, const gchar*, gpointer self) {
    static_cast<SecretServiceClient*>(self)->onChange();
  };
  const auto vanished = [](GDBusConnection*, const gchar*, gpointer self) {
    auto* const client = static_cast<SecretServiceClient*>(self);
    client->service_.reset();  // a session with it does not outlive the service
    client->onGone();
  };
  nameWatch_ = g_bus_watch_name_on_connection(
      connection_.get(), busName, G_BUS_NAME_WATCHER_FLAGS_NONE, appeared, vanished, this, nullptr);
}

void SecretServiceClient::disconnect() {
  service_.reset();
  if (connection_ == nullptr) return;
  g_bus_unwatch_name(std::exchange(nameWatch_, 0));
  g_dbus_connection_signal_unsubscribe(connection_.get(), std::exchange(signals_, 0));
  connection_.reset();
}

SecretServiceClient::Reach SecretServiceClient::reachOf(const ErrorSlot& error) {
  if (connection_ != nullptr && g_dbus_connection_is_closed(connection_.get()) != FALSE)
    return Reach::absent;
  if (!isTimeout(*error.get())) service_.reset();  // a new session may be all it takes
  return isMissingService(*error.get()) ? Reach::absent : Reach::silent;
}

std::optional<std::int32_t> SecretServiceClient::statusOf(const ErrorSlot& error) {
  if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED) ||
      g_error_matches(error.get(), SECRET_ERROR, SECRET_ERROR_IS_LOCKED))
    return keychain_status::interactionNotAllowed;
  return reachOf(error) == Reach::absent ? std::nullopt
                                         : std::optional(keychain_status::notAvailable);
}

}  // namespace lunevra
