#pragma once

#include "platform/log.h"

namespace lunevra {

/// One line each on standard error, whole even when several threads or processes write there.
/// A line that cannot be written is lost; there is nowhere left to say so. Never throws.
class StderrLog : public Log {
 public:
  void line(std::string_view text) override;
};

}  // namespace lunevra
