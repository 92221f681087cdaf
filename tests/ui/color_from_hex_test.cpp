#include "ui/color_from_hex.h"

#include <gtest/gtest.h>

namespace lunevra {
namespace {

TEST(ColorFromHex, ReadsEveryForm) {
  struct Case {
    const char* hex;
    int red, green, blue, alpha;
  };
  constexpr Case cases[] = {
      {"6366f1", 0x63, 0x66, 0xf1, 255},
      {"6366F1", 0x63, 0x66, 0xf1, 255},
      {"#0a0a0f", 0x0a, 0x0a, 0x0f, 255},
      {" [ef4444] ", 0xef, 0x44, 0x44, 255},
      {"f0c", 255, 0, 204, 255},
      {"80ff0001", 255, 0, 1, 128},
      {"12345z", 0x01, 0x23, 0x45, 255},
      {"zzzzzz", 0, 0, 0, 255},
      {"", 255, 255, 0, 255},
      {"12345", 255, 255, 0, 255},
      {"123456789", 255, 255, 0, 255},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.hex);
    const auto color = colorFromHex(c.hex);
    EXPECT_DOUBLE_EQ(color.red, c.red / 255.0);
    EXPECT_DOUBLE_EQ(color.green, c.green / 255.0);
    EXPECT_DOUBLE_EQ(color.blue, c.blue / 255.0);
    EXPECT_DOUBLE_EQ(color.alpha, c.alpha / 255.0);
  }
}

}  // namespace
}  // namespace lunevra
