#include "platform/linux/quiet_secret_service.h"

#include <libsecret/secret.h>

namespace lunevra {
namespace {

void refusePrompt(SecretService* self, SecretPrompt* /*prompt*/, const GVariantType* /*type*/,
                  GCancellable* cancellable, GAsyncReadyCallback callback, gpointer data) {
  auto* const task = g_task_new(self, cancellable, callback, data);
  g_task_return_new_error(task, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED,
                          "The keyring wants to ask the person");
  g_object_unref(task);
}

GVariant* finishPrompt(SecretService* /*self*/, GAsyncResult* result, GError** error) {
  return static_cast<GVariant*>(g_task_propagate_pointer(reinterpret_cast<GTask*>(result), error));
}

void initializeClass(gpointer type, gpointer /*data*/) {
  auto* const service = static_cast<SecretServiceClass*>(type);
  service->prompt_async = refusePrompt;
  service->prompt_finish = finishPrompt;
}

}  // namespace

GType quietSecretServiceType() {
  static const GType type = g_type_register_static_simple(
      SECRET_TYPE_SERVICE, "LunevraQuietSecretService", sizeof(SecretServiceClass), initializeClass,
      sizeof(SecretService), nullptr, G_TYPE_FLAG_NONE);
  return type;
}

}  // namespace lunevra
