#include "platform/linux/bounded_job.h"

namespace lunevra {

BoundedJob::BoundedJob(GMainContext* context, std::chrono::milliseconds patience)
    : context_(context),
      cancellable_(g_cancellable_new()),
      alarm_(g_timeout_source_new(static_cast<guint>(patience.count()))) {
  const auto ring = [](gpointer cancellable) -> gboolean {
    g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
    return G_SOURCE_REMOVE;
  };
  g_source_set_callback(alarm_.get(), ring, cancellable_.get(), nullptr);
  g_source_attach(alarm_.get(), context_);
}

void BoundedJob::ended(GObject* /*source*/, GAsyncResult* result, gpointer job) {
  static_cast<BoundedJob*>(job)->result_.reset(
      static_cast<GAsyncResult*>(g_object_ref(static_cast<gpointer>(result))));
}

GAsyncResult* BoundedJob::wait() {
  // Whoever started the operation is told of its end even when it is cancelled.
  while (result_ == nullptr) g_main_context_iteration(context_, TRUE);
  return result_.get();
}

}  // namespace lunevra
