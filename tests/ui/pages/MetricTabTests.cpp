#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// The pages that show one metric and its processes, beyond their words.
class MetricTabTest : public test::ViewFixture {
 protected:
  static BarContent bar(const test::MountedViews& tab) {
    return *tab.kind<BarContent>().front().view->as<BarContent>();
  }
};

TEST_F(MetricTabTest, aVolumeOfNothingIsAnEmptyBar) {
  computer.blockStorage.drivers = {{.bytesRead = 0, .bytesWritten = 0}};
  computer.volumes.rootCapacity = platform::VolumeCapacity{};
  auto views = tab<DiskTab>();
  computer.advance(1s);
  update(views);
  EXPECT_EQ(bar(views).fraction, 0.0);
}

TEST_F(MetricTabTest, thePressureColoursTheMemoryInUse) {
  constexpr std::uint64_t gibibyte = 1073741824;
  auto views = tab<MemoryTab>();
  const auto use = [&](std::uint64_t gibibytes) {
    computer.memory.used = platform::MemoryUsage{.wiredBytes = gibibytes * gibibyte};
    env->memory->tick();
    update(views);
    return bar(views);
  };
  EXPECT_EQ(use(8).fill, statusNeutralColor.withOpacity(0.8));
  EXPECT_EQ(use(12).fill, statusWarningColor.withOpacity(0.8));
  EXPECT_EQ(use(15).fill, statusCriticalColor.withOpacity(0.8));
  EXPECT_EQ(use(17).fraction, 1.0);
  EXPECT_TRUE(views.hasText("-1.0 GB")) << "more than there is";
}

TEST_F(MetricTabTest, networksOfTodayCanBeFiltered) {
  computer.networkInterfaces.setLink("en0", 2048, 1024);
  context();
  auto& today = env->recorder->current.networkSSIDs;
  today = {{"Ethernet", {.uploadBytes = 1024, .downloadBytes = 0}}};
  auto views = tab<NetworkTab>();
  EXPECT_THAT(views.menuItems(), IsEmpty()) << "nothing to choose from";
  today["Home"] = {.uploadBytes = 5 << 20, .downloadBytes = 1 << 20};
  computer.advance(1s);
  update(views);
  EXPECT_THAT(views.menuItems(), ElementsAre("All", "Home", "Ethernet")) << "most traffic first";
  views.chooseMenuItem("Ethernet");
  EXPECT_FALSE(views.hasText("5 MB"));
  today.erase("Ethernet");
  today["Other"] = {};
  computer.advance(1s);
  update(views);
  EXPECT_TRUE(views.hasText("5 MB")) << "what was chosen is not there any more";
}

}  // namespace
}  // namespace kestrune::ui
