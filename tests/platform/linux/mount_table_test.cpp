#include "platform/linux/mount_table.h"

#include <set>
#include <sys/sysmacros.h>

#include "platform/linux/linux_test_support.h"
#include "platform/linux/udev_drives.h"
#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

const std::string root = "20 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n";

std::vector<std::string> paths(const std::string& table) {
  std::vector<std::string> paths;
  for (const auto& volume : parseMountTable(root + table)) paths.push_back(volume.path);
  return paths;
}

TEST(MountTableTest, ShowsTheVolumesAPersonKnows) {
  struct Case {
    const char* what;
    std::string table;
    std::vector<std::string> shown;
  };
  const Case cases[] = {
      {"a drive, its path with a space and an umlaut",
       "40 20 8:17 / /media/ann/K\\303\\234\\040Y rw,nosuid - vfat /dev/sdb1 rw\n",
       {"/", "/media/ann/KÜ Y"}},
      {"where other desktops mount it",
       "40 20 8:17 / /run/media/ann/KEY rw - exfat /dev/sdb1 rw\n",
       {"/", "/run/media/ann/KEY"}},
      {"what is the system's own",
       "21 20 0:20 / /proc rw - proc proc rw\n22 20 0:21 / /sys rw - sysfs sysfs rw\n"
       "23 20 0:22 / /run rw - tmpfs tmpfs rw\n24 20 8:2 / /boot/efi rw - vfat /dev/sda2 rw\n"
       "25 20 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro\n"
       "26 20 0:30 / /home/ann/x rw - tmpfs none rw\n27 20 0:31 / /srv/c rw - overlay o rw\n"
       "28 20 0:32 / /net rw - autofs a rw\n29 20 8:3 / /var/lib/vms rw - ext4 /dev/sda3 rw\n",
       {"/"}},
      {"other disks and shares",
       "30 20 8:3 / /home rw - ext4 /dev/sda3 rw\n"
       "31 20 0:40 / /mnt/nas rw - nfs4 nas:/x rw\n32 20 0:41 / /mnt/ssh rw - fuse.sshfs h: rw\n",
       {"/", "/home", "/mnt/nas", "/mnt/ssh"}},
      {"second views",
       "40 20 8:17 / /media/KEY rw - vfat /dev/sdb1 rw\n41 20 8:17 / /srv/same rw - vfat /dev/sdb1 "
       "rw\n"
       "42 20 8:1 /home/ann /srv/part rw - ext4 /dev/sda1 rw\n",
       {"/", "/media/KEY"}},
      {"one on top of another",
       "40 20 8:17 / /media/KEY rw - vfat /dev/sdb1 rw\n41 40 8:33 / /media/KEY rw - vfat "
       "/dev/sdc1 rw\n",
       {"/", "/media/KEY"}},
      {"a share over the folder that leads to a drive",
       "40 20 8:17 / /media/KEY rw - vfat /dev/sdb1 rw\n41 20 0:50 / /media rw - nfs nas:/x rw\n",
       {"/", "/media"}},
      {"a drive on a share",
       "41 20 0:50 / /media rw - nfs nas:/x rw\n"
       "40 41 8:17 / /media/KEY rw - vfat /dev/sdb1 rw\n",
       {"/", "/media", "/media/KEY"}},
      {"lines that make no sense",
       "garbage\n\n40 20 8:17 / /media/KEY\n41 20 x:y / /media/A rw - vfat /dev/sdb1 rw\n"
       "42 42 8:33 / relative rw - vfat /dev/sdc1 rw\n43 20 8:49 / /media/B rw - vfat /dev/sdd1 rw",
       {"/", "/media/B"}},
  };
  for (const auto& [what, table, shown] : cases) EXPECT_EQ(paths(table), shown) << what;
  EXPECT_TRUE(parseMountTable("").empty());
  EXPECT_TRUE(parseMountTable(std::string(100'000, '\0')).empty());
}

TEST(MountTableTest, OddTablesShowEachVolumeOnceByItsPath) {
  int tables = 0;
  for (const auto& file : std::filesystem::directory_iterator(LUNEVRA_CORPUS "/mount_table")) {
    std::set<std::string> seen;
    for (const auto& volume : parseMountTable(*readWholeFile(file)))
      EXPECT_TRUE(volume.path.starts_with('/') && seen.insert(volume.path).second)
          << file << volume.path;
    ++tables;
  }
  EXPECT_GT(tables, 5);
}

TEST(MountTableTest, TellsWhatTheKernelKnowsOfAVolume) {
  const auto volumes = parseMountTable(
      "40 20 8:17 / /a ro - vfat /dev/sdb1 rw\n41 20 8:33 / /b rw - vfat /dev/sdc1 ro,x=ro\n"
      "42 20 8:49 / /c rw - vfat /dev/sdd1 rw,errors=remount-ro\n43 20 0:9 / /d rw - cifs //n/x "
      "rw\n"
      "44 20 0:10 / /e rw - fuse.rclone r rw\n");
  const std::vector<MountedVolume> expected{{"/a", makedev(8, 17), false, true, 40},
                                            {"/b", makedev(8, 33), false, true, 41},
                                            {"/c", makedev(8, 49), false, false, 42},
                                            {"/d", 0, true, false, 43},
                                            {"/e", 0, false, false, 44}};
  EXPECT_EQ(volumes, expected);
}

TEST(UdevDrivesTest, LabelsAreDecoded) {
  const std::pair<const char*, std::optional<std::string>> labels[] = {
      {"KEYDRIVE", "KEYDRIVE"}, {"My\\x20Key", "My Key"}, {"\\xc3\\x9c\\x5cx20", "Ü\\x20"},
      {"a\\x2", "a\\x2"},       {"a\\xzz", "a\\xzz"},     {"line\\x0abreak", std::nullopt},
      {"", std::nullopt}};
  for (const auto& [encoded, label] : labels) EXPECT_EQ(decodeLabel(encoded), label) << encoded;
  const UdevDrives drives;
  EXPECT_EQ(drives.isInternal(makedev(4095, 77)), std::nullopt);
  EXPECT_EQ(drives.label(makedev(4095, 77)), std::nullopt);
}

}  // namespace
}  // namespace lunevra
