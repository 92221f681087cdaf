#pragma once

#include <vector>

#include "platform/random_source.h"
#include "ui/lock_screen/quote.h"

namespace lunevra {

/// The fixed table of bedtime quotes, each entry with an id of its own. The random source outlives
/// the provider.
class QuotesProvider {
 public:
  explicit QuotesProvider(RandomSource& random);

  [[nodiscard]] const std::vector<Quote>& quotes() const { return quotes_; }
  /// Any entry, all equally likely whatever was drawn before.
  [[nodiscard]] const Quote& randomQuote() const;

 private:
  RandomSource& random_;
  std::vector<Quote> quotes_;
};

}  // namespace lunevra
