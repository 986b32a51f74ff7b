#include "ui/pages/DiskTab.h"

#include <string>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Gauges.h"
#include "ui/components/Sparkline.h"
#include "ui/components/Trends.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto centered = VerticalAlignment::center;
constexpr Color readColor = ColorRole::accent;
constexpr Color writeColor = Color(ColorRole::orange, 0.8);

}  // namespace

View DiskTab::body() {
  return dashboard(
      views(cardRow(views(rateCard("Read", "arrow.down.circle", &DiskSnapshot::readBytesPerSec),
                          rateCard("Write", "arrow.up.circle", &DiskSnapshot::writeBytesPerSec))),
            history(), volumes()));
}

Series DiskTab::rates(double DiskSnapshot::*rate) const {
  return seriesOf(*disk().history, rate);
}

View DiskTab::rateCard(std::string title, std::string symbolName, double DiskSnapshot::*rate) const {
  return Card{section(rateParts(context_, label(std::move(title), std::move(symbolName)),
                                (*disk().current).*rate, rates(rate)))};
}

View DiskTab::history() const {
  const Series reads = rates(&DiskSnapshot::readBytesPerSec);
  const Series writes = rates(&DiskSnapshot::writeBytesPerSec);
  const SparklineView read{reads.values, readColor, true, "Metric trend"};
  const SparklineView write{writes.values, writeColor, true, "Metric trend"};
  // The front chart has the read-out for both.
  auto front = write.body().withReadOut(readOut(context_, {"Read", reads}, {"Write", writes}, formatRate));
  auto legend = hstack(12, centered, views(legendEntry("Read", readColor), legendEntry("Write", writeColor)));
  return section(views(sectionHeader(label("I/O history  (last 60 s)", "chart.xyaxis.line")),
                       zstack(topLeading, views(read, std::move(front))).height(60), std::move(legend)));
}

View DiskTab::volumes() const {
  const DiskSnapshot& now = *disk().current;
  const double fraction =
      share(static_cast<double>(now.volumeUsedBytes), static_cast<double>(now.volumeTotalBytes));
  auto name = hstack(6, centered, views(symbol("internaldrive"), verbatim(now.volumeName).withLineLimit(1)))
                  .withFont(13);
  auto title = hstack(innerSpacing, centered,
                      views(std::move(name), spacer(),
                            text("%@ free", {formatBytes(now.volumeFreeBytes)}).withMonospacedDigits(14)));
  auto captions = caption(hstack(innerSpacing, centered,
                                 views(text("%@ used", {formatBytes(now.volumeUsedBytes)}), spacer(),
                                       text("%@ total", {formatBytes(now.volumeTotalBytes)}))));
  return section(
      views(sectionHeader(text("Volumes")),
            vstack(6, HorizontalAlignment::leading,
                   views(std::move(title), ThinBar{fraction, ColorRole::accent}, std::move(captions)))));
}

}  // namespace kestrune::ui
