#pragma once

#include <chrono>

#include "platform/linux/glib_handles.h"

namespace lunevra {

/// Several asynchronous operations of GLib's, one after the other, that together take no longer
/// than agreed. Lives on one thread, whose default context it runs meanwhile.
class BoundedJob {
 public:
  BoundedJob(GMainContext* context, std::chrono::milliseconds patience);
  ~BoundedJob() = default;
  BoundedJob(const BoundedJob&) = delete;
  BoundedJob& operator=(const BoundedJob&) = delete;

  /// Starts an operation and returns how it ended; valid until the next one. `start` passes on the
  /// three it is given.
  template <class Start>
  [[nodiscard]] GAsyncResult* run(Start start) {
    result_.reset();
    start(cancellable_.get(), &BoundedJob::ended, static_cast<gpointer>(this));
    return wait();
  }

  /// From now on every operation ends at once, as cancelled.
  void cancel() { g_cancellable_cancel(cancellable_.get()); }

 private:
  static void ended(GObject* source, GAsyncResult* result, gpointer job);
  [[nodiscard]] GAsyncResult* wait();

  GMainContext* context_;
  ObjectHandle<GCancellable> cancellable_;
  GlibHandle<GSource> alarm_;
  ObjectHandle<GAsyncResult> result_;
};

}  // namespace lunevra
