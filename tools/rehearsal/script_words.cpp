#include "rehearsal/script_words.h"

#include <array>
#include <charconv>
#include <cmath>

namespace lunevra::rehearsal {
namespace {

bool isBlank(char character) {
  return character == ' ' || character == '\t';
}

// Reads the text that begins after the quote at `position`, and leaves `position` after its end.
std::string readQuoted(std::string_view line, std::size_t& position) {
  std::string text;
  for (++position; position < line.size(); ++position) {
    const char character = line[position];
    if (character == '"') {
      ++position;
      return text;
    }
    if (character != '\\') {
      text += character;
      continue;
    }
    if (++position == line.size()) break;
    if (line[position] != '"' && line[position] != '\\')
      throw MalformedScript(std::string("unknown escape \\") + line[position] + " in a text");
    text += line[position];
  }
  throw MalformedScript("a text has no closing quote");
}

template <class Number>
std::optional<Number> wholeNumber(std::string_view text) {
  Number number{};
  const auto* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

bool isDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Fields of fixed width joined by one character each, such as 06:30 or 2026-01-31.
template <std::size_t Count>
std::optional<std::array<int, Count>> fixedFields(std::string_view text, char separator,
                                                  const std::array<std::size_t, Count>& widths) {
  std::array<int, Count> fields{};
  for (std::size_t index = 0; index < Count; ++index) {
    const auto field = text.substr(0, widths[index]);
    if (field.size() != widths[index] || !isDigits(field)) return std::nullopt;
    fields[index] = *wholeNumber<int>(field);
    text.remove_prefix(field.size());
    if (index + 1 == Count) break;
    if (!text.starts_with(separator)) return std::nullopt;
    text.remove_prefix(1);
  }
  return text.empty() ? std::optional(fields) : std::nullopt;
}

std::optional<TimeOfDay> timeOfDay(std::string_view text) {
  TimeOfDay time;
  if (const auto full = fixedFields<3>(text, ':', {2, 2, 2}))
    time = {(*full)[0], (*full)[1], (*full)[2]};
  else if (const auto brief = fixedFields<2>(text, ':', {2, 2}))
    time = {(*brief)[0], (*brief)[1], 0};
  else
    return std::nullopt;
  return time.hour < 24 && time.minute < 60 && time.second < 60 ? std::optional(time)
                                                                : std::nullopt;
}

int daysInMonth(int year, int month) {
  constexpr std::array days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && isLeap ? 29 : days.at(static_cast<std::size_t>(month - 1));
}

}  // namespace

Words::Words(std::string_view line) {
  std::size_t position = 0;
  while (position < line.size()) {
    if (isBlank(line[position])) {
      ++position;
      continue;
    }
    if (line[position] == '#') return;
    if (line[position] == '"') {
      words_.push_back({readQuoted(line, position), true});
      if (position < line.size() && !isBlank(line[position]) && line[position] != '#')
        throw MalformedScript("a blank is missing after a text");
      continue;
    }
    const auto begin = position;
    while (position < line.size() && !isBlank(line[position]) && line[position] != '#' &&
           line[position] != '"')
      ++position;
    if (position < line.size() && line[position] == '"')
      throw MalformedScript("a blank is missing before a text");
    words_.push_back({std::string(line.substr(begin, position - begin)), false});
  }
}

const Words::Word& Words::take(std::string_view wanted) {
  if (isAtEnd()) throw MalformedScript(std::string(wanted) + " is missing");
  return words_[next_++];
}

void Words::expectEnd() const {
  if (!isAtEnd()) throw MalformedScript("unexpected \"" + words_[next_].text + "\"");
}

std::string Words::takeWord(std::string_view wanted) {
  return take(wanted).text;
}

std::string Words::takeText(std::string_view wanted) {
  const auto& word = take(wanted);
  if (!word.isQuoted)
    throw MalformedScript(std::string(wanted) + " must stand in quotes: " + word.text);
  return word.text;
}

bool Words::takeIf(std::string_view word) {
  if (isAtEnd() || words_[next_].isQuoted || words_[next_].text != word) return false;
  ++next_;
  return true;
}

bool Words::takeYesNo() {
  if (takeIf("yes")) return true;
  if (takeIf("no")) return false;
  throw MalformedScript("yes or no is wanted");
}

std::int64_t Words::takeInteger(std::string_view wanted) {
  const auto& word = take(wanted);
  const auto number = wholeNumber<std::int64_t>(word.text);
  if (!number || word.isQuoted)
    throw MalformedScript(std::string(wanted) + " must be a whole number: " + word.text);
  return *number;
}

double Words::takeNumber(std::string_view wanted) {
  const auto& word = take(wanted);
  const auto number = wholeNumber<double>(word.text);
  if (!number || word.isQuoted || !std::isfinite(*number))
    throw MalformedScript(std::string(wanted) + " must be a number: " + word.text);
  return *number;
}

TimeOfDay Words::takeTime() {
  const auto& word = take("a time");
  const auto time = timeOfDay(word.text);
  if (!time || word.isQuoted) throw MalformedScript("not a time (HH:MM or HH:MM:SS): " + word.text);
  return *time;
}

bool Words::isDateNext() const {
  return !isAtEnd() && !words_[next_].isQuoted &&
         fixedFields<3>(words_[next_].text, '-', {4, 2, 2});
}

DateComponents Words::takeInstant() {
  const auto& word = take("an instant");
  const auto date = fixedFields<3>(word.text, '-', {4, 2, 2});
  if (!date || word.isQuoted) throw MalformedScript("not a date (YYYY-MM-DD): " + word.text);
  const auto [year, month, day] = *date;
  if (month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month))
    throw MalformedScript("no such day: " + word.text);
  const auto time = takeTime();
  return {year, month, day, time.hour, time.minute, time.second};
}

std::chrono::milliseconds Words::takeDuration() {
  struct Unit {
    std::string_view suffix;
    double milliseconds;
  };
  constexpr std::array<Unit, 5> units{
      {{"ms", 1.0}, {"s", 1e3}, {"m", 6e4}, {"h", 3.6e6}, {"d", 8.64e7}}};
  constexpr double longest = 8.64e7 * 366 * 100;
  const auto& word = take("a duration");
  for (const auto& unit : units) {
    const std::string_view text = word.text;
    if (word.isQuoted || !text.ends_with(unit.suffix)) continue;
    const auto number = wholeNumber<double>(text.substr(0, text.size() - unit.suffix.size()));
    if (!number || !(*number >= 0.0) || *number * unit.milliseconds > longest) continue;
    return std::chrono::milliseconds{std::llround(*number * unit.milliseconds)};
  }
  throw MalformedScript("not a duration (a number with ms, s, m, h or d): " + word.text);
}

}  // namespace lunevra::rehearsal
