#include "ui/lock_screen/quotes_provider.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

#include "platform/foundation/uuid.h"

namespace lunevra {
namespace {

struct Entry {
  const char* text;
  const char* author;
};

constexpr Entry table[] = {
    {"statusWithReply:", "King David"},
    {"startBlockWithDomains:until:generation:reply:", "King David"},
    {"clearBlockWithGeneration:reply:", "King David"},
    {"extendBlockUntil:reply:", "King David"},
    {"pingWithReply:", "King David"},
    {"Weeping may stay for the night, but rejoicing comes in the morning.", "King David"},
    {"The Lord is my shepherd; I shall not want.", "King David"},
    {"The Lord gives strength to his people; the Lord blesses his people with peace.",
     "King David"},
    {"He who watches over Israel will neither slumber nor sleep. So you can.", "King David"},
    {"The sleep of a laborer is sweet, whether they eat little or much.", "King Solomon"},
    {"When you lie down, you will not be afraid; when you lie down, your sleep will be sweet.",
     "King Solomon"},
    {"He gives to his beloved sleep.", "King Solomon"},
    {"Trust in the Lord with all your heart and lean not on your own understanding.",
     "King Solomon"},
    {"It is in vain that you rise up early and go late to rest. God gives to his beloved sleep.",
     "King Solomon"},
    {"Come to me, all you who are weary and burdened, and I will give you rest.", "Jesus"},
    {"Do not be anxious about tomorrow, for tomorrow will worry about itself.", "Jesus"},
    {"Peace I leave with you; my peace I give you. Let not your hearts be troubled.", "Jesus"},
    {"And the peace of God, which transcends all understanding, will guard your hearts and minds.",
     "The Apostle Paul"},
    {"Cast all your anxiety on him because he cares for you.", "The Apostle Peter"},
    {"There remains a Sabbath rest for the people of God. Let us make every effort to enter that "
     "rest.",
     "The Apostle Paul"},
    {"Your body is a temple of the Holy Spirit. Honor it with rest.", "The Apostle Paul"},
    {"My presence will go with you, and I will give you rest.", "God to Moses"},
    {"Six days you shall labor, but the seventh day you shall rest.", "God's command"},
    {"The Lord your God is with you. In his love he will quiet you with his love.",
     "The prophet Zephaniah"},
    {"The night is far gone; the day is at hand. Rest now, rise renewed.", "Ancient wisdom"},
    {"God cannot give us happiness and peace apart from Himself, because there is no such thing.",
     "A twentieth-century author"},
    {"There are far, far better things ahead than any we leave behind.",
     "A twentieth-century author"},
    {"God allows us to experience the low points of life in order to teach us lessons that we "
     "could learn in no other way.",
     "A twentieth-century author"},
    {"Sleep is God's celestial nurse who croons away our consciousness, and God deals with us.",
     "A nineteenth-century preacher"},
    {"God is too good to be unkind and He is too wise to be mistaken. Rest in that.",
     "A nineteenth-century preacher"},
    {"Tonight, release your grip. God holds the world while you sleep.", "A pastor"},
    {"Sleep is a daily reminder that we are not God. He never sleeps, so you can.", "A pastor"},
    {"Resting in God is not passivity. It is actively trusting that He is at work while you sleep.",
     "A pastor and author"},
    {"God is most glorified in us when we are most satisfied in Him. Tonight, be satisfied.",
     "A pastor and author"},
    {"Rest is not a reward for finishing. Rest is a gift for the journey.", "Ancient proverb"},
    {"God designed you for rhythms of work and rest. Honor both.", "Biblical wisdom"},
    {"Sleep is an act of faith. You're trusting God with the hours you cannot control.",
     "Biblical wisdom"},
    {"Your worth is not measured by your productivity. Rest in that truth.", "Biblical wisdom"},
    {"Sabbath is not just stopping work. It's starting trust.", "Biblical wisdom"},
    {"Lay it down tonight. God is already working on tomorrow.", "Biblical wisdom"},
    {"You can't pour from an empty cup. Rest is not selfish, it's stewardship.", "Biblical wisdom"},
    {"If you don't choose rest, your body will choose it for you.", "Biblical wisdom"},
    {"God's mercies are new every morning. Let go of today and trust Him with tomorrow.",
     "Biblical wisdom"},
    {"God never hurries. There are no deadlines against which He must work. Rest in His timing.",
     "A twentieth-century pastor"},
    {"Grace is not opposed to effort, it is opposed to earning. You've done enough today.",
     "A twentieth-century philosopher"},
    {"Get some rest. Your future self will thank you.", "Wisdom"},
};

std::optional<std::uint64_t> randomNumber(RandomSource& random) {
  std::array<std::uint8_t, sizeof(std::uint64_t)> bytes{};
  if (!random.fill(bytes)) return std::nullopt;
  std::uint64_t number = 0;
  std::memcpy(&number, bytes.data(), bytes.size());
  return number;
}

std::string randomId(RandomSource& random) {
  std::array<std::uint8_t, 16> bytes{};
  // Without randomness ids repeat, and only comparisons by id would suffer; none decides anything.
  static_cast<void>(random.fill(bytes));
  return randomUuidText(bytes);
}

}  // namespace

QuotesProvider::QuotesProvider(RandomSource& random) : random_(random) {
  quotes_.reserve(std::size(table));
  for (const auto& entry : table) quotes_.push_back({randomId(random), entry.text, entry.author});
}

const Quote& QuotesProvider::randomQuote() const {
  constexpr auto greatest = std::numeric_limits<std::uint64_t>::max();
  const std::uint64_t count = quotes_.size();
  // The numbers past the last whole multiple of the count would favour the first entries.
  const auto limit = greatest - greatest % count;
  while (const auto number = randomNumber(random_))
    if (*number < limit) return quotes_[*number % count];
  return quotes_.front();  // without randomness one good word is still better than none
}

}  // namespace lunevra
