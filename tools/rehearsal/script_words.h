#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/calendar.h"

namespace lunevra::rehearsal {

/// Why a script cannot be played; the line is added by whoever reads it.
class MalformedScript : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TimeOfDay {
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// The words of one line, taken one by one. Every `take…` throws MalformedScript, which names what
/// it wanted, when the next word is missing or of another form.
class Words {
 public:
  /// Splits at blanks; `#` outside a text begins a comment. Throws MalformedScript.
  explicit Words(std::string_view line);

  [[nodiscard]] bool isAtEnd() const { return next_ == words_.size(); }
  void expectEnd() const;

  [[nodiscard]] std::string takeWord(std::string_view wanted);  ///< quoted or not
  [[nodiscard]] std::string takeText(std::string_view wanted);  ///< quoted
  [[nodiscard]] bool takeYesNo();
  [[nodiscard]] std::int64_t takeInteger(std::string_view wanted);
  [[nodiscard]] double takeNumber(std::string_view wanted);
  [[nodiscard]] TimeOfDay takeTime();
  [[nodiscard]] DateComponents takeInstant();
  [[nodiscard]] std::chrono::milliseconds takeDuration();

  /// Takes the next word if it is this one, unquoted.
  [[nodiscard]] bool takeIf(std::string_view word);
  [[nodiscard]] bool isTextNext() const { return !isAtEnd() && words_[next_].isQuoted; }
  [[nodiscard]] bool isDateNext() const;

 private:
  struct Word {
    std::string text;
    bool isQuoted = false;
  };
  [[nodiscard]] const Word& take(std::string_view wanted);

  std::vector<Word> words_;
  std::size_t next_ = 0;
};

}  // namespace lunevra::rehearsal
