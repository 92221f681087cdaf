#include <filesystem>
#include <gtest/gtest.h>

#include "physical_key/physical_key_manager.h"
#include "platform/foundation/digest.h"
#include "platform/linux/mount_table.h"
#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

bool opens(std::string_view contents, std::size_t secretLength = 32) {
  return PhysicalKeyManager::verifyKeyFile(contents, sha256(Bytes(secretLength)));
}

std::string keyWith(const std::string& member) {
  return R"({"version":1,"identifier":"","secret":"AAAA",)" + member + '}';
}

TEST(KeyFileTest, OddFilesOpenNothing) {
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(LUNEVRA_CORPUS "/key_file")) {
    const auto name = file.path().filename().string();
    EXPECT_EQ(opens(*readWholeFile(file)), name.starts_with("accepted-")) << name;
    ++files;
  }
  EXPECT_GT(files, 20);
}

TEST(KeyFileTest, HugeFilesAreReadToTheirEnd) {
  const auto nested = std::string(100'000, '[') + std::string(100'000, ']');
  std::string many = "\"x\":[{}";
  while (many.size() < largestPlausibleFile) many += ",{\"a\":[]}";
  const std::pair<std::string, bool> files[] = {
      {std::string(largestPlausibleFile, '['), false},
      {std::string(largestPlausibleFile, '{'), false},
      {std::string(largestPlausibleFile, ' '), false},
      {keyWith("\"x\":" + nested), true},
      {keyWith(many + ']'), true},
      {keyWith("\"secret\":\"" + std::string(largestPlausibleFile, 'A') + '"'), false}};
  for (const auto& [contents, isKey] : files)
    EXPECT_EQ(opens(contents, 3), isKey) << contents.substr(0, 60);
}

}  // namespace
}  // namespace lunevra
