#pragma once

#include <string>

namespace lunevra {

/// A bedtime quote. Two are equal when they read the same; the id only tells entries apart.
struct Quote {
  std::string id;
  std::string text;
  std::string author;

  friend bool operator==(const Quote& left, const Quote& right) {
    return left.text == right.text && left.author == right.author;
  }
};

}  // namespace lunevra
