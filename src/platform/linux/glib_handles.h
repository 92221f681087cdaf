#pragma once

#include <gio/gio.h>
#include <memory>

namespace lunevra {

struct GlibRelease {
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
  void operator()(GHashTable* table) const { g_hash_table_unref(table); }
  void operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
  }
};

/// Holds what GLib gave away, and releases it with its owner.
template <class T>
using GlibHandle = std::unique_ptr<T, GlibRelease>;

struct ObjectRelease {
  template <class T>
  void operator()(T* object) const {
    g_object_unref(object);
  }
};
template <class T>
using ObjectHandle = std::unique_ptr<T, ObjectRelease>;

/// Receives the error of a call and keeps it.
class ErrorSlot {
 public:
  ErrorSlot() = default;
  ~ErrorSlot() { g_clear_error(&error_); }
  ErrorSlot(const ErrorSlot&) = delete;
  ErrorSlot& operator=(const ErrorSlot&) = delete;

  [[nodiscard]] GError** out() {
    g_clear_error(&error_);
    return &error_;
  }
  [[nodiscard]] const GError* get() const { return error_; }

 private:
  GError* error_ = nullptr;
};

}  // namespace lunevra
