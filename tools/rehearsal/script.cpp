#include "rehearsal/script.h"

#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>

namespace lunevra::rehearsal {
namespace {

std::uint64_t seedOf(const std::string& text) {
  std::uint64_t hash = 14695981039346656037U;  // FNV-1a
  for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  return hash;
}

// Whether the bytes are well-formed UTF-8 as far as length and continuation bytes go.
bool isUtf8(const std::string& text) {
  int following = 0;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (following > 0) {
      if ((byte & 0xC0) != 0x80) return false;
      --following;
    } else if (byte >= 0x80) {
      if (byte < 0xC2 || byte > 0xF4) return false;
      following = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
    }
  }
  return following == 0;
}

std::optional<Statement> parseLine(const std::string& text, int number) {
  Words words(text);
  if (words.isAtEnd()) return std::nullopt;
  const auto keyword = words.takeWord("a statement");
  if (keyword == "expect") return Statement{number, parseExpectation(words)};
  return Statement{number, parseAction(keyword, words)};
}

std::string place(const std::string& file, int line) {
  return file + ":" + std::to_string(line);
}

}  // namespace

Script parseScript(const std::string& file, const std::string& text) {
  Script script{file, seedOf(text), {}};
  std::istringstream lines(text);
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    try {
      if (!isUtf8(line)) throw MalformedScript("not UTF-8");
      if (auto statement = parseLine(line, number))
        script.statements.push_back(std::move(*statement));
    } catch (const MalformedScript& malformed) {
      throw MalformedScript(place(file, number) + ": " + malformed.what());
    }
  }
  return script;
}

Script readScript(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (!stream.is_open() || stream.bad()) throw MalformedScript(file + ": cannot be read");
  return parseScript(file, text);
}

void play(const Script& script, const Night::StageFactory& makeStage, std::ostream& out,
          Tally& tally) {
  Night night(makeStage, script.seed, out);
  for (const auto& [line, meaning] : script.statements) {
    if (const auto* action = std::get_if<Action>(&meaning)) {
      (*action)(night);
      night.settle();
      continue;
    }
    const auto comparison = std::get<Expectation>(meaning)(night);
    ++(comparison.holds() ? tally.passed : tally.failed);
    if (!comparison.holds())
      out << place(script.file, line) << ": expected " << comparison.expected << ", found "
          << comparison.found << '\n';
  }
}

}  // namespace lunevra::rehearsal
