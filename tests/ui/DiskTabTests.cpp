#include <gmock/gmock.h>

#include "ui/DiskTab.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class DiskTabTest : public test::ViewFixture {
 protected:
  DiskTabTest() {
    computer.blockStorage.drivers = {{.bytesRead = 0, .bytesWritten = 0}};
    computer.volumes.rootCapacity =
        platform::VolumeCapacity{.totalBytes = 4ULL << 30U, .freeBytes = 1ULL << 30U};
  }
  static std::vector<std::vector<double>> lines(const test::MountedViews& tab) {
    std::vector<std::vector<double>> heights;
    for (const auto& shown : tab.kind<LineChartContent>()) {
      heights.push_back(shown.view->as<LineChartContent>()->lines.at(0).heights);
    }
    return heights;
  }
};

TEST_F(DiskTabTest, showsRatesAndTheVolume) {
  auto tab = this->tab<DiskTab>();
  EXPECT_THAT(lines(tab), ElementsAre(IsEmpty(), IsEmpty(), IsEmpty(), IsEmpty()));
  EXPECT_TRUE(tab.hasText("Macintosh HD")) << "until the first figures are there";
  computer.blockStorage.drivers = {{.bytesRead = 2048, .bytesWritten = 1 << 20}};
  computer.advance(1s);
  computer.advance(1s);
  update(tab);
  EXPECT_THAT(tab.texts(), ElementsAre("Read", "0 B/s", "Write", "0 B/s",            //
                                       "I/O history  (last 60 s)", "Read", "Write",  //
                                       "Volumes", "Test Disk", "1.0 GB", " free",    //
                                       "3.0 GB", " used", "4.0 GB", " total"));
  EXPECT_THAT(lines(tab)[0], ElementsAre(1.0, 0.0));
  EXPECT_EQ(tab.readOut(3, 0).substr(0, 33), "Read 2.0 KB/s  Write 1.0 MB/s · ");
  const auto bars = tab.kind<BarContent>();
  ASSERT_EQ(bars.size(), 1U);
  EXPECT_EQ(bars[0].view->as<BarContent>()->fraction, 0.75);
}

TEST_F(DiskTabTest, aVolumeOfNothingIsAnEmptyBar) {
  computer.volumes.rootCapacity = platform::VolumeCapacity{};
  auto tab = this->tab<DiskTab>();
  computer.advance(1s);
  update(tab);
  EXPECT_EQ(tab.kind<BarContent>()[0].view->as<BarContent>()->fraction, 0.0);
}

}  // namespace
}  // namespace kestrune::ui
