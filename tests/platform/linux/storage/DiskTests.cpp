#include <filesystem>

#include <gtest/gtest.h>

#include "platform/linux/storage/LinuxBlockStorage.h"
#include "platform/linux/storage/LinuxVolumes.h"
#include "platform/linux/storage/MountInfo.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

class LinuxBlockStorageTest : public testing::Test {
 protected:
  void makeDrive(const std::string& name, const std::string& stat) {
    root.write("sys/block/" + name + "/stat", stat);
    std::filesystem::create_directories(root / ("sys/block/" + name + "/device"));
  }
  // "read/written" of each drive, in bytes.
  std::string drives() {
    const auto drivers = storage.blockDrivers();
    if (!drivers) return "failed";
    const auto shown = [](const auto& bytes) { return bytes ? std::to_string(*bytes) : "-"; };
    std::string text;
    for (const auto& [read, written] : *drivers) text += shown(read) + "/" + shown(written) + " ";
    return text;
  }

  test::TemporaryFolder root;
  LinuxBlockStorage storage{root.path()};
};

constexpr const char* someStat =
    "     100        5     2000       30      200        7     6000       40        0\n";

TEST_F(LinuxBlockStorageTest, countsDrivesWithHardwareBehindThem) {
  makeDrive("sda", someStat);
  makeDrive("nvme0c0n1", someStat);
  root.write("sys/block/nvme0c0n1/hidden", "1\n");
  for (const std::string name : {"loop0", "zram0", "dm-0", "md127", "ram1"}) {
    root.write("sys/block/" + name + "/stat", someStat);
  }
  EXPECT_EQ(drives(), "1024000/3072000 ");
}

TEST_F(LinuxBlockStorageTest, keepsTheFiguresOfADriveThatCannotBeReadForAMoment) {
  EXPECT_EQ(drives(), "failed") << "no list at all";
  std::filesystem::create_directories(root / "sys/block/sda/device");
  EXPECT_EQ(drives(), "-/- ");
  makeDrive("sda", someStat);
  EXPECT_EQ(drives(), "1024000/3072000 ");
  for (const auto* text : {"", "1 2", "1 2 -5 4 5 6 -7\n", "1 2 99999999999999999999 4 5 6 x\n"}) {
    root.write("sys/block/sda/stat", text);
    EXPECT_EQ(drives(), "1024000/3072000 ") << text;
  }
  std::filesystem::remove_all(root / "sys/block/sda");
  EXPECT_EQ(drives(), "");
  makeDrive("sda", "0 0 4 0 0 0 0\n");
  EXPECT_EQ(drives(), "2048/0 ") << "another drive with the same name";
}

class LinuxVolumesTest : public testing::Test {
 protected:
  void mount(const std::string& device, const std::string& type, const std::string& source) {
    root.write("proc/self/mountinfo", "22 27 0:21 / /proc rw - proc proc rw\n27 1 " + device +
                                          " / / rw,relatime shared:1 - " + type + " " + source + " rw\n");
  }
  // For a program that has just started.
  std::optional<std::string> name() { return LinuxVolumes(root.path()).name("/"); }

  test::TemporaryFolder root;
};

TEST_F(LinuxVolumesTest, namesTheVolumeByItsLabelEvenAfterAChange) {
  const std::string label = "run/udev/data/b254:1";
  mount("254:1", "ext4", "/dev/vda1");
  root.write(label, "E:ID_FS_LABEL=My_Disk\nE:ID_FS_LABEL_ENC=My\\x20Disk\n");
  EXPECT_EQ(name(), "My Disk");
  LinuxVolumes volumes(root.path());
  root.write(label, "E:ID_FS_LABEL=Old\n");
  std::filesystem::last_write_time(root / label, {});
  EXPECT_EQ(volumes.name("/"), "Old");
  root.write(label, "E:ID_FS_LABEL=New\n");
  EXPECT_EQ(volumes.name("/"), "New");
}

TEST_F(LinuxVolumesTest, namesAVolumeWithoutALabelByItsDevice) {
  mount("0:30", "btrfs", "/dev/nvme0n1p2");
  EXPECT_EQ(name(), "nvme0n1p2");
  root.write("sys/class/block/nvme0n1p2/dev", "259:2\n");
  root.write("sys/dev/block/259:2/uevent", "MAJOR=259\nDEVNAME=from-uevent\n");
  EXPECT_EQ(name(), "from-uevent");
  root.write("sys/dev/block/259:2/dm/name", "vg-root\n");
  EXPECT_EQ(name(), "vg-root");
  root.write("run/udev/data/b259:2", "E:ID_FS_LABEL_ENC=fedora\n");
  EXPECT_EQ(name(), "fedora") << "the number of the device, not of the mount";
  mount("0:31", "overlay", "overlay");
  EXPECT_EQ(name(), "overlay");
  mount("0:31", "zfs", "tank/ROOT/debian\\040one");
  EXPECT_EQ(name(), "tank/ROOT/debian one");
  mount("0:31", "tmpfs", "none");
  EXPECT_EQ(name(), "tmpfs");
}

TEST_F(LinuxVolumesTest, unreadableMountsHaveNoName) {
  EXPECT_EQ(name(), std::nullopt);
  for (const auto* text :
       {"", "27 1 254:1 / / rw -", "27 1 254:1 / /home rw - ext4 /dev/vda1 rw\n", "\\\n\n"}) {
    root.write("proc/self/mountinfo", text);
    EXPECT_EQ(name(), std::nullopt) << text;
  }
}

TEST(MountInfoTest, topmostMountCounts) {
  const auto mount =
      findMount("1 0 0:2 / / rw - rootfs rootfs rw\n2 1 8:1 / / rw - ext4 /dev/sda1 rw\n", "/");
  ASSERT_TRUE(mount);
  EXPECT_EQ(mount->source + " " + mount->device, "/dev/sda1 8:1");
  EXPECT_EQ(unescaped("a\\040b\\x2fc\\04\\xzz\\777\\"), "a b/c\\04\\xzz\\777\\");
}

TEST(LinuxVolumesOnThisMachine, aMissingFolderHasNoCapacity) {
  EXPECT_TRUE(LinuxVolumes().capacity("/"));
  EXPECT_FALSE(LinuxVolumes().capacity("/no/such/folder"));
}

}  // namespace
}  // namespace kestrune::platform
