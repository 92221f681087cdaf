#include "platform/linux/cloud_folder.h"

#include <atomic>
#include <sys/stat.h>

#include "platform/linux/linux_test_support.h"

namespace lunevra {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

std::string json(int value) {
  return R"({"type":"integer","value":)" + std::to_string(value) + "}";
}

class CloudFolderTest : public ::testing::Test {
 protected:
  CloudFolderTest() { fs::create_directory(path_); }

  [[nodiscard]] fs::path file(const std::string& name) const { return path_ / name; }
  /// A change that must be seen, so that one that must not has had its time.
  void expectStillListening(CloudFolder& cloud) {
    writeFile(file("sentinel.json"), json(++sentinel_));
    EXPECT_TRUE(eventually([&] { return cloud.object("sentinel") == StoredValue(sentinel_); }));
  }

  TemporaryFolder folder_;
  fs::path path_ = folder_ / "cloud";
  RecordingLog log_;
  int sentinel_ = 0;
};

TEST_F(CloudFolderTest, EveryWayOfWritingIsSeenAndAnnounced) {
  CloudFolder cloud(path_, log_);
  std::atomic<int> calls = 0;
  const auto observation = cloud.observeExternalChanges([&] { ++calls; });
  std::fstream open;
  const std::vector<std::pair<const char*, std::function<void(int)>>> ways{
      {"in place", [&](int i) { writeFile(file("key.json"), json(i)); }},
      {"by renaming",
       [&](int i) {
         writeFile(file(".key.json.part"), json(i));
         fs::rename(file(".key.json.part"), file("key.json"));
       }},
      {"anew",
       [&](int i) {
         fs::remove(file("key.json"));
         writeFile(file("key.json"), json(i));
       }},
      {"hard link",
       [&](int i) {
         fs::remove(file("key.json"));
         writeFile(folder_ / "elsewhere", json(i));
         fs::create_hard_link(folder_ / "elsewhere", file("key.json"));
       }},
      {"in pieces, without closing", [&](int i) {
         open.open(file("key.json"), std::ios::out | std::ios::trunc);
         const auto text = json(i);
         open << text.substr(0, 5) << std::flush << text.substr(5) << std::flush;
       }}};
  int value = 0;
  for (const auto& [name, write] : ways) {
    const int before = calls;
    write(++value);
    EXPECT_TRUE(eventually([&] { return cloud.object("key") == StoredValue(value); },
                           std::chrono::seconds{1}))
        << name;
    EXPECT_TRUE(eventually([&] { return calls > before; })) << name;
  }
  fs::remove(file("key.json"));
  EXPECT_TRUE(eventually([&] { return cloud.object("key") == std::nullopt; }));
  EXPECT_TRUE(log_.lines().empty());
}

TEST_F(CloudFolderTest, WhatIsNoGoodFileOfAKeyDoesNoHarm) {
  CloudFolder cloud(path_, log_);
  cloud.set("key", 1);
  std::atomic<int> calls = 0;
  const auto observation = cloud.observeExternalChanges([&] { ++calls; });
  const auto name = file("key.json");
  const std::vector<std::pair<const char*, std::function<void()>>> intrusions{
      {"conflict copy", [&] { writeFile(file("key (conflicted copy 2026-01-01).json"), json(9)); }},
      {"numbered copy", [&] { writeFile(file("key 2.json"), json(9)); }},
      {"sync conflict",
       [&] { writeFile(file("key.sync-conflict-20260101-000000-ABCDEFG.json"), json(9)); }},
      {"temporary", [&] { writeFile(file(".key.json"), json(9)); }},
      {"foreign", [&] { writeFile(file("notes.txt"), "hello"); }},
      {"half-written", [&] { writeFile(name, json(9).substr(0, 20)); }},
      {"empty", [&] { writeFile(name, ""); }},
      {"binary", [&] { writeFile(name, "\0\xff\x80"s); }},
      {"nested", [&] { writeFile(name, std::string(500'000, '[')); }},
      {"huge", [&] { writeFile(name, json(9) + std::string(2'000'000, ' ')); }},
      {"unknown type", [&] { writeFile(name, R"({"type":"colour","value":1})"); }},
      {"directory", [&] { fs::create_directory(name); }},
      {"link loop", [&] { fs::create_symlink("key.json", name); }},
      {"pipe", [&] { ::mkfifo(name.c_str(), 0600); }}};
  for (const auto& [kind, intrude] : intrusions) {
    const bool replaces =
        fs::path(kind) == "directory" || fs::path(kind) == "link loop" || fs::path(kind) == "pipe";
    if (replaces) fs::rename(name, folder_ / "away");
    intrude();
    cloud.synchronize();
    EXPECT_EQ(cloud.object("key"), replaces ? cloud.object("key") : StoredValue(1)) << kind;
    expectStillListening(cloud);
    fs::remove_all(name);
    writeFile(name, json(1));
    cloud.synchronize();
    EXPECT_EQ(cloud.object("key"), StoredValue(1)) << kind;
  }
  EXPECT_TRUE(log_.lines().empty());
}

TEST_F(CloudFolderTest, TwoMachinesHearEachOtherButNotThemselves) {
  CloudFolder here(path_, log_);
  CloudFolder there(path_, log_);
  std::atomic<int> heardHere = 0;
  std::atomic<int> heardThere = 0;
  const auto first = here.observeExternalChanges([&] { ++heardHere; });
  const auto second = there.observeExternalChanges([&] { ++heardThere; });
  for (int i = 1; i <= 5; ++i) {
    here.set("blockStartHour", i);
    here.set("wakeHour", i);
    here.synchronize();
    ASSERT_TRUE(eventually([&] { return there.object("wakeHour") == StoredValue(i); }));
  }
  ASSERT_TRUE(eventually([&] { return heardThere > 0; }));
  EXPECT_EQ(heardHere, 0);
  const auto before = fs::last_write_time(file("wakeHour.json"));
  there.set("wakeHour", 5);
  EXPECT_EQ(fs::last_write_time(file("wakeHour.json")), before) << "an equal value was written";
  const int soFar = heardThere;
  there.set("wakeHour", 6);
  EXPECT_TRUE(eventually([&] { return heardHere == 1; }));
  EXPECT_EQ(here.object("wakeHour"), StoredValue(6));
  EXPECT_EQ(heardThere, soFar);
}

TEST_F(CloudFolderTest, ABurstIsOneChange) {
  CloudFolder cloud(path_, log_);
  std::atomic<int> calls = 0;
  const auto observation = cloud.observeExternalChanges([&] { ++calls; });
  for (int i = 0; i < 100; ++i) writeFile(file("key" + std::to_string(i) + ".json"), json(i));
  EXPECT_TRUE(eventually([&] { return cloud.object("key99") == StoredValue(99); }));
  EXPECT_TRUE(eventually([&] { return calls > 0; }));
  EXPECT_LE(calls, 3);
}

TEST_F(CloudFolderTest, AFolderThatComesGoesOrIsReplacedIsFollowed) {
  const auto root = folder_ / "a";
  const auto target = root / "b/cloud";
  const auto link = folder_ / "link";
  fs::create_symlink(target, link);
  for (const auto& path : {target, link}) {
    CloudFolder cloud(path, log_);
    const auto shows = [&](std::optional<StoredValue> value) {
      return eventually([&] { return cloud.object("key") == value; });
    };
    EXPECT_EQ(cloud.object("key"), std::nullopt);
    fs::create_directories(target);
    writeFile(target / "key.json", json(1));
    EXPECT_TRUE(shows(1)) << "appeared";
    fs::rename(root, folder_ / "away");
    EXPECT_TRUE(shows({})) << "moved with its parents";
    fs::create_directories(target);
    writeFile(target / "key.json", json(2));
    EXPECT_TRUE(shows(2)) << "another in its place";
    writeFile(target / "key.json", json(3));
    EXPECT_TRUE(shows(3)) << "watched again";
    fs::remove_all(root);
    EXPECT_TRUE(shows({})) << "deleted";
    fs::remove_all(folder_ / "away");
  }
  CloudFolder cloud(link, log_);
  writeFile(file("key.json"), json(4));
  fs::create_symlink(path_, folder_ / "new link");
  fs::rename(folder_ / "new link", link);
  EXPECT_TRUE(eventually([&] { return cloud.object("key") == StoredValue(4); })) << "pointed away";
}

TEST_F(CloudFolderTest, AWriteThatFailsIsKeptAndTriedAgain) {
  const auto missing = folder_ / "drive/cloud";
  CloudFolder cloud(missing, log_);
  cloud.set("key", 1);
  cloud.set("other", "ä/."s);
  EXPECT_EQ(cloud.object("key"), StoredValue(1));
  EXPECT_EQ(log_.lines().size(), 1U);
  EXPECT_FALSE(fs::exists(folder_ / "drive")) << "a folder in place of an unmounted drive";
  fs::create_directory(folder_ / "drive");
  cloud.synchronize();
  CloudFolder reader(missing, log_);
  EXPECT_EQ(reader.object("key"), StoredValue(1));
  EXPECT_EQ(reader.object("other"), StoredValue("ä/."s));
  EXPECT_EQ(std::distance(fs::directory_iterator(missing), {}), 2);
}

TEST_F(CloudFolderTest, AKeyIsAFileNameAndNothingElse) {
  CloudFolder cloud(path_, log_);
  for (const std::string key : {"../escape", "/etc/key", ".hidden", "a b", "50%", "Lunevra.dotted"})
    cloud.set(key, key);
  CloudFolder reader(path_, log_);
  for (const std::string key : {"../escape", "/etc/key", ".hidden", "a b", "50%", "Lunevra.dotted"})
    EXPECT_EQ(reader.object(key), StoredValue(key));
  EXPECT_TRUE(fs::exists(file("Lunevra.dotted.json")));
  EXPECT_EQ(std::distance(fs::directory_iterator(path_), {}), 6);
}

}  // namespace
}  // namespace lunevra
