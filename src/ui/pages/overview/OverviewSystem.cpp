#include <string>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Gauges.h"
#include "ui/components/NetworkParts.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/overview/OverviewParts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;

std::string gigabyteText(std::uint64_t bytes) {
  return formatGibibytes(gibibytes(static_cast<double>(bytes)), 1);
}

Color storageColor(double fraction) {
  if (fraction < 0.7) return ColorRole::accent;
  return fraction < 0.88 ? statusWarningColor : statusCriticalColor;
}

View legendRow(std::string symbolName, std::string name, std::uint64_t bytes, Color color) {
  return hstack(
      4, centered,
      views(symbol(std::move(symbolName)).withFont(10).withForeground(color.withOpacity(0.7)).width(14),
            caption(text(std::move(name))), spacer(0), figure(gigabyteText(bytes)).withForeground(color)));
}

View storageBlock(const ViewContext& context, const DailySummary* record) {
  const DiskSnapshot& now = *context.env.disk->current;
  const std::uint64_t total = record ? record->diskTotalBytes : now.volumeTotalBytes;
  const std::uint64_t used = record ? record->diskUsedBytes : now.volumeUsedBytes;
  const std::uint64_t free = record ? record->diskFreeBytes : now.volumeFreeBytes;
  const double fraction = share(static_cast<double>(used), static_cast<double>(total));
  const Color color = storageColor(fraction);
  const auto ring = [&] {
    auto centre = vstack(
        2, HorizontalAlignment::center,
        views(verbatim(context.formats.percent(fraction, 0)).withMonospacedDigits(18, FontWeight::semibold),
              caption(text("used"))));
    return zstack({}, views(DonutRing{fraction, 14, color}, std::move(centre))).size(100, 100);
  };
  const auto legend = [&] {
    return vstack(8, leading,
                  views(caption(text("Storage")),
                        vstack(6, leading,
                               views(legendRow("internaldrive", "Total", total, ColorRole::primary),
                                     legendRow("square.fill", "Used", used, color),
                                     legendRow("square", "Free", free, ColorRole::primary)))))
        .fillWidth();
  };
  return firstFit(views(hstack(16, VerticalAlignment::top, views(ring(), legend())),
                        vstack(10, leading, views(ring(), legend()))));
}

View activityRow(std::string symbolName, Color color, std::string name, std::string value) {
  return hstack(6, centered,
                views(symbol(std::move(symbolName)).withFont(12).withForeground(color),
                      vstack(1, leading, views(caption(text(std::move(name))), figure(std::move(value))))))
      .fillWidth();
}

// Rates now; on a past day what was read and written in total.
View activityBlock(const ViewContext& context, const DailySummary* record) {
  const DiskSnapshot& now = *context.env.disk->current;
  const std::string read =
      record ? formatBytes(wholeBytes(record->totalDiskReadBytes())) : formatRate(now.readBytesPerSec);
  const std::string written =
      record ? formatBytes(wholeBytes(record->totalDiskWriteBytes())) : formatRate(now.writeBytesPerSec);
  return vstack(10, leading,
                views(caption(text(record ? "I/O (total)" : "I/O")),
                      activityRow("arrow.down.circle", ColorRole::accent, "Read", read),
                      activityRow("arrow.up.circle", ColorRole::orange, "Write", written)))
      .width(110, leading);
}

View uptimeBlock(SystemUptime up) {
  const std::string hours = std::to_string(up.hours) + "h";
  const std::string minutes = std::to_string(up.minutes) + "m";
  std::string large = minutes;
  std::string under;
  if (up.days >= 1) {
    large = std::to_string(up.days) + "d";
    under = hours + " " + minutes;
  } else if (up.hours >= 1) {
    large = hours;
    under = minutes;
  }
  std::vector<View> parts = views(caption(text("Uptime")),
                                  verbatim(std::move(large)).withMonospacedDigits(22, FontWeight::semibold));
  if (!under.empty()) parts.push_back(caption(verbatim(std::move(under))));
  return vstack(4, leading, std::move(parts)).minWidth(60);
}

}  // namespace

View systemCard(const ViewContext& context, const DailySummary* record) {
  SystemUptime up = context.env.uptime();
  if (record) up = {record->uptimeDays, record->uptimeHours, record->uptimeMinutes};
  return Card{hstack(20, VerticalAlignment::top,
                     views(storageBlock(context, record), divider(), activityBlock(context, record),
                           divider(), uptimeBlock(up)))
                  .paddingVertical(10)
                  .fillWidth()
                  .fillHeight()};
}

}  // namespace kestrune::ui
