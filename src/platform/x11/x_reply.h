#pragma once

#include <cstdlib>
#include <memory>

namespace lunevra {

struct FreeReply {
  // libxcb hands out replies and events from malloc
  void operator()(void* reply) const { std::free(reply); }
};

/// A reply or event of the X server.
template <class T>
using XReply = std::unique_ptr<T, FreeReply>;

}  // namespace lunevra
