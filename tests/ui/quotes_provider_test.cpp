#include "ui/lock_screen/quotes_provider.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

/// Fills with one byte a call, as told; fails once it has nothing left.
class ScriptedRandom final : public RandomSource {
 public:
  explicit ScriptedRandom(std::vector<std::uint8_t> script) : script_(std::move(script)) {}
  [[nodiscard]] bool fill(std::span<std::uint8_t> bytes) override {
    if (next_ == script_.size()) return false;
    std::fill(bytes.begin(), bytes.end(), script_[next_++]);
    return true;
  }

 private:
  std::vector<std::uint8_t> script_;
  std::size_t next_ = 0;
};

TEST(QuotesProvider, HoldsTheTableInOrder) {
  SeededRandom random;
  const QuotesProvider provider(random);
  const auto& quotes = provider.quotes();
  ASSERT_EQ(quotes.size(), 46U);
  EXPECT_EQ(quotes[22].author, "God's command");
  EXPECT_EQ(quotes[24].author, "Ancient wisdom");
  EXPECT_EQ(quotes[45], (Quote{"", "Get some rest. Your future self will thank you.", "Wisdom"}));
  EXPECT_EQ(quotes[17].author, quotes[19].author);
  std::set<std::string> ids;
  for (const auto& quote : quotes) {
    EXPECT_FALSE(quote.text.empty() || quote.author.empty());
    ids.insert(quote.id);
  }
  EXPECT_EQ(ids.size(), quotes.size());
  EXPECT_NE(QuotesProvider(random).quotes()[0].id, quotes[0].id);
}

TEST(QuotesProvider, DrawsEveryQuoteEquallyOften) {
  SeededRandom random;
  const QuotesProvider provider(random);
  constexpr int drawsEach = 400;
  std::map<std::string, int> drawn;
  for (int i = 0; i < 46 * drawsEach; ++i) ++drawn[provider.randomQuote().id];
  ASSERT_EQ(drawn.size(), 46U);
  for (const auto& [id, count] : drawn) EXPECT_NEAR(count, drawsEach, 5 * 20);  // five sigma
}

TEST(QuotesProvider, RejectsWhatWouldFavourTheFirstAndDoesWithoutRandomness) {
  std::vector<std::uint8_t> script(46, 0);  // the ids
  script.insert(script.end(), {0xff, 0x01});
  ScriptedRandom random(script);
  const QuotesProvider provider(random);
  const auto accepted = 0x0101010101010101ULL % 46;
  EXPECT_EQ(&provider.randomQuote(), &provider.quotes()[accepted]);
  EXPECT_EQ(&provider.randomQuote(), &provider.quotes().front());
}

}  // namespace
}  // namespace lunevra
