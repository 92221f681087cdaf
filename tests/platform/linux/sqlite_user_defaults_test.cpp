#include "platform/linux/sqlite_user_defaults.h"

#include <fcntl.h>
#include <limits>
#include <signal.h>

#include "platform/linux/linux_test_support.h"

namespace lunevra {
namespace {

using namespace std::string_literals;

class SqliteUserDefaultsTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::optional<StoredValue> afterReopening(std::string_view key) {
    return SqliteUserDefaults(file_, log_).object(key);
  }
  [[nodiscard]] bool isSetAside(int number) const {
    return std::filesystem::exists(file_.string() + ".corrupt-" + std::to_string(number));
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_ / "data/standard.sqlite";
  RecordingLog log_;
};

TEST_F(SqliteUserDefaultsTest, EveryValueComesBackAsItWas) {
  const std::vector<StoredValue> values{std::numeric_limits<std::int64_t>::min(),
                                        std::numeric_limits<std::int64_t>::max(),
                                        true,
                                        false,
                                        -0.1,
                                        1e308,
                                        5.0,
                                        Instant{1'790'000'000.123456},
                                        Instant{-1.5},
                                        "Grüße \U0001F319"s,
                                        ""s,
                                        "a\0b"s,
                                        std::vector<std::string>{},
                                        std::vector<std::string>{"a.com", "日本\n\"", ""}};
  SqliteUserDefaults defaults(file_, log_);
  for (std::size_t i = 0; i < values.size(); ++i) defaults.set(std::to_string(i), values[i]);
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(defaults.object(std::to_string(i)), values[i]) << i;
    EXPECT_EQ(afterReopening(std::to_string(i)), values[i]) << i;
  }
  defaults.set("7", std::numeric_limits<double>::quiet_NaN());
  defaults.remove("8");
  EXPECT_EQ(afterReopening("7"), std::nullopt);
  EXPECT_EQ(afterReopening("8"), std::nullopt);
  EXPECT_TRUE(log_.lines().empty());
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(file_.parent_path()).permissions() & perms::all,
            perms::owner_all);
}

TEST_F(SqliteUserDefaultsTest, RowsOfOtherProcessesAreSeenAtTheNextReadIfTheyFit) {
  struct Row {
    const char* columns;
    std::optional<StoredValue> expected;
  };
  const std::vector<Row> rows{
      {"'integer', 7", 7},       {"'integer', 7.5", {}},
      {"'integer', '7'", {}},    {"'flag', 1", true},
      {"'flag', 2", {}},         {"'double', 0.5", 0.5},
      {"'double', 3", 3.0},      {"'double', 9e999", {}},
      {"'double', NULL", {}},    {"'date', 1790000000", Instant{1'790'000'000}},
      {"'date', 'tonight'", {}}, {"'text', 'on'", "on"s},
      {"'text', x'FF'", {}},     {"'texts', '[\"a\"]'", std::vector<std::string>{"a"}},
      {"'texts', '[1]'", {}},    {"'texts', '[\"a\"'", {}},
      {"'colour', 1", {}}};
  SqliteUserDefaults defaults(file_, log_);
  defaults.set("key", 1);
  OtherConnection other(file_);
  for (const auto& row : rows) {
    other.run("REPLACE INTO defaults VALUES('key', "s + row.columns + ")");
    EXPECT_EQ(defaults.object("key"), row.expected) << row.columns;
  }
  other.run("DELETE FROM defaults");
  EXPECT_EQ(defaults.object("key"), std::nullopt);
  EXPECT_EQ(other.answer("SELECT sql FROM sqlite_master"),
            "CREATE TABLE defaults(key TEXT PRIMARY KEY NOT NULL, type TEXT NOT NULL, value) "
            "WITHOUT ROWID");
  EXPECT_EQ(other.answer("PRAGMA journal_mode"), "wal");
}

TEST_F(SqliteUserDefaultsTest, AnEqualValueIsNotWrittenAgain) {
  SqliteUserDefaults defaults(file_, log_);
  defaults.set("key", 1);
  OtherConnection other(file_);
  const auto before = other.answer("PRAGMA data_version");
  for (int i = 0; i < 10; ++i) defaults.set("key", 1);
  EXPECT_EQ(other.answer("PRAGMA data_version"), before);
  defaults.set("key", true);  // equal as a number only
  EXPECT_NE(other.answer("PRAGMA data_version"), before);
}

struct Damage {
  const char* name;
  std::function<void(const std::filesystem::path&)> inflict;
};

void PrintTo(const Damage& damage, std::ostream* out) {
  *out << damage.name;
}

class DamagedDefaultsTest : public SqliteUserDefaultsTest,
                            public ::testing::WithParamInterface<Damage> {};

TEST_P(DamagedDefaultsTest, IsSetAsideAndTheProgramGoesOn) {
  {
    SqliteUserDefaults defaults(file_, log_);
    for (int i = 0; i < 20; ++i) defaults.set("key" + std::to_string(i), std::string(2000, 'x'));
    OtherConnection(file_).run("PRAGMA wal_checkpoint(TRUNCATE)");
  }
  GetParam().inflict(file_);
  {
    SqliteUserDefaults defaults(file_, log_);
    EXPECT_EQ(defaults.object("key15"), std::nullopt);
    defaults.set("latch", 5);
  }
  EXPECT_EQ(afterReopening("latch"), StoredValue(5));
  EXPECT_TRUE(isSetAside(1));
  EXPECT_EQ(log_.lines().size(), 1U);

  SqliteUserDefaults open(file_, log_);
  EXPECT_EQ(open.object("latch"), StoredValue(5));
  OtherConnection(file_).run("PRAGMA wal_checkpoint(TRUNCATE)");
  GetParam().inflict(file_);
  (void)open.object("latch");
  open.set("latch", 6);
  EXPECT_EQ(open.object("latch"), StoredValue(6));
  EXPECT_EQ(afterReopening("latch"), StoredValue(6));
  EXPECT_TRUE(isSetAside(2));
  EXPECT_EQ(log_.lines().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DamagedDefaultsTest,
    ::testing::Values(
        Damage{"NoDatabase", [](const auto& file) { writeFile(file, std::string(9000, 'z')); }},
        Damage{"Short", [](const auto& file) { writeFile(file, "SQLite format 3"); }},
        Damage{"Foreign",
               [](const auto& file) {
                 OtherConnection(file).run("DROP TABLE defaults; CREATE TABLE defaults(a, b)");
               }},
        Damage{"DamagedPages",
               [](const auto& file) {
                 std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
                 stream.seekp(100);
                 stream << std::string(std::filesystem::file_size(file) - 100, '\xA5');
               }}),
    [](const auto& kind) { return kind.param.name; });

TEST_F(SqliteUserDefaultsTest, AFileOrFolderDeletedByHandIsMadeAnew) {
  SqliteUserDefaults defaults(file_, log_);
  const auto deletions =
      std::vector<std::function<void()>>{[&] { std::filesystem::remove(file_); },
                                         [&] { std::filesystem::remove_all(file_.parent_path()); },
                                         [&] {
                                           std::filesystem::remove(file_);
                                           OtherConnection(file_).run("CREATE TABLE unrelated(a)");
                                         }};
  for (const auto& remove : deletions) {
    defaults.set("old", 1);
    remove();
    EXPECT_EQ(defaults.object("old"), std::nullopt);
    defaults.set("new", 2);
    EXPECT_EQ(afterReopening("old"), std::nullopt);
    EXPECT_EQ(afterReopening("new"), StoredValue(2));
    EXPECT_EQ(OtherConnection(file_).answer("PRAGMA integrity_check"), "ok");
    defaults.remove("new");
  }
  EXPECT_TRUE(log_.lines().empty());
}

TEST_F(SqliteUserDefaultsTest, WithoutADiskValuesHoldInMemoryUntilItIsBack) {
  writeFile(file_.parent_path(), "a file where the folder belongs");
  SqliteUserDefaults defaults(file_, log_);
  defaults.set("latch", 5);
  defaults.set("other", 6);
  defaults.remove("other");
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(defaults.object("latch"), StoredValue(5));
    ASSERT_EQ(defaults.object("other"), std::nullopt);
  }
  EXPECT_LE(log_.lines().size(), 2U);  // reading fails, writing fails
  std::filesystem::remove(file_.parent_path());
  defaults.set("more", 7);
  EXPECT_EQ(afterReopening("latch"), StoredValue(5));
  EXPECT_EQ(afterReopening("more"), StoredValue(7));
}

TEST_F(SqliteUserDefaultsTest, AFullDiskLosesNothing) {
  std::filesystem::create_directory(file_.parent_path());
  onSmallDisk(file_.parent_path(), [&] {
    SqliteUserDefaults defaults(file_, log_);
    defaults.set("key", "old"s);
    const auto filler = file_.parent_path() / "filler";
    writeFile(filler, std::string(1024 * 1024, 'f'));
    const auto large = std::string(50'000, 'n');
    defaults.set("key", large);
    EXPECT_EQ(defaults.object("key"), StoredValue(large));
    EXPECT_EQ(afterReopening("key"), StoredValue("old"s));
    EXPECT_EQ(log_.lines().size(), 1U);
    std::filesystem::remove(filler);
    defaults.set("more", 1);
    EXPECT_EQ(afterReopening("key"), StoredValue(large));
    EXPECT_EQ(afterReopening("more"), StoredValue(1));
  });
}

TEST_F(SqliteUserDefaultsTest, AReadOnlyDiskIsReadAndWrittenOnceItCanBe) {
  std::filesystem::create_directory(file_.parent_path());
  onSmallDisk(file_.parent_path(), [&] {
    for (const bool isClosedByAnother : {false, true}) {
      SqliteUserDefaults(file_, log_).set("key", isClosedByAnother);
      if (isClosedByAnother) (void)OtherConnection(file_).answer("SELECT count(*) FROM defaults");
      remount(file_.parent_path(), true);
      {
        SqliteUserDefaults defaults(file_, log_);
        EXPECT_EQ(defaults.object("key"), StoredValue(isClosedByAnother));
        defaults.set("latch", 5);
        EXPECT_EQ(defaults.object("latch"), StoredValue(5));
        EXPECT_EQ(defaults.object("key"), StoredValue(isClosedByAnother));
        EXPECT_EQ(afterReopening("latch"), std::nullopt);
        remount(file_.parent_path(), false);
        defaults.set("more", 1);
        EXPECT_EQ(afterReopening("latch"), StoredValue(5));
        defaults.remove("latch");
      }
    }
  });
}

TEST_F(SqliteUserDefaultsTest, AnotherProcessThatKeepsTheFileDoesNotHangThisOne) {
  SqliteUserDefaults defaults(file_, log_);
  defaults.set("key", 1);
  OtherConnection other(file_);
  other.run("BEGIN IMMEDIATE; REPLACE INTO defaults VALUES('key', 'integer', 77)");
  const auto start = std::chrono::steady_clock::now();
  for (int i = 2; i < 10; ++i) defaults.set("key", i);
  EXPECT_EQ(defaults.object("key"), StoredValue(9));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds{1500});
  other.run("ROLLBACK");
  defaults.set("more", 1);
  EXPECT_EQ(afterReopening("key"), StoredValue(9));
}

/// Kills processes that write ever larger numbers as fast as they can.
class KilledWriterTest : public SqliteUserDefaultsTest {
 protected:
  /// Answers the last number that a writer reported before it was killed.
  std::int64_t killWriterAfter(int reports, std::int64_t first) {
    std::array<int, 2> channel{};
    EXPECT_EQ(::pipe(channel.data()), 0);
    const auto child = ::fork();
    if (child == 0) {
      SqliteUserDefaults defaults(file_, log_);
      for (auto value = first;; ++value) {
        defaults.set("latch", value);
        if (::write(channel[1], &value, sizeof value) != sizeof value) ::_exit(1);
      }
    }
    ::close(channel[1]);
    std::int64_t reported = 0;
    for (int i = 0; i < reports; ++i)
      EXPECT_EQ(::read(channel[0], &reported, sizeof reported), ssize_t{sizeof reported});
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    for (std::int64_t more = 0; ::read(channel[0], &more, sizeof more) > 0;) reported = more;
    ::close(channel[0]);
    return reported;
  }
  [[nodiscard]] std::int64_t onDisk() {
    return SqliteUserDefaults(file_, log_).integer("latch").value_or(-1);
  }
  [[nodiscard]] static int rounds() { return soakTime().count() > 0 ? 1000 : 100; }
};

TEST_F(KilledWriterTest, LeavesTheOldOrTheNewValue) {
  SqliteUserDefaults(file_, log_).set("latch", 0);
  for (int round = 0; round < rounds(); ++round) {
    const auto reported = killWriterAfter(1 + round % 3, onDisk() + 1);
    const auto value = onDisk();
    ASSERT_TRUE(value == reported || value == reported + 1) << reported << " " << value;
  }
  EXPECT_EQ(OtherConnection(file_).answer("PRAGMA integrity_check"), "ok");
  EXPECT_TRUE(log_.lines().empty());
}

TEST_F(KilledWriterTest, LeavesASoundFileOnADiskThatIsFullNowAndThen) {
  std::filesystem::create_directory(file_.parent_path());
  onSmallDisk(file_.parent_path(), [&] {
    SqliteUserDefaults(file_, log_).set("latch", 0);
    const auto filler = file_.parent_path() / "filler";
    for (int round = 0; round < rounds() / 4; ++round) {
      const auto before = onDisk();
      const bool isFull = round % 2 == 0;
      if (isFull) writeFile(filler, std::string(1024 * 1024, 'f'));
      const auto reported = killWriterAfter(1 + round % 3, before + 1);
      std::filesystem::remove(filler);
      const auto value = onDisk();
      ASSERT_GE(value, isFull ? before : reported);
      ASSERT_LE(value, reported + 1);
    }
    EXPECT_EQ(OtherConnection(file_).answer("PRAGMA integrity_check"), "ok");
    EXPECT_FALSE(isSetAside(1));
  });
}

}  // namespace
}  // namespace lunevra
