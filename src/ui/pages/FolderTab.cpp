#include "ui/pages/FolderTab.h"

#include <algorithm>
#include <array>

#include "runtime/Utf8.h"
#include "settings/Settings.h"
#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Effects.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Gauges.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/Shell.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

using platform::FileLocation;

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto trailing = HorizontalAlignment::trailing;
constexpr auto centered = VerticalAlignment::center;
constexpr double rowHeight = 34;
constexpr double nameWidth = 190;
constexpr double totalWidth = 80;
constexpr double barHeight = 12;

View listLine(View name, View bar, View total) {
  return hstack(innerSpacing * 2, centered,
                views(std::move(name).width(nameWidth, leading), std::move(bar).fillWidth(),
                      std::move(total).width(totalWidth, trailing)));
}

View nameCell(const FolderItem& item) {
  std::vector<View> parts =
      views(symbol(item.isDirectory ? "folder.fill" : "doc.fill")
                .withFont(14)
                .withForeground(item.isDirectory ? Color(ColorRole::accent) : Color(ColorRole::tertiary)),
            verbatim(item.url.shownName()).withFont(14).withLineLimit(1));
  if (item.isDirectory && item.childCount) {
    parts.push_back(text("%@ files", {std::to_string(*item.childCount)})
                        .withMonospacedDigits(11)
                        .withForeground(ColorRole::tertiary)
                        .withLineLimit(1));
  }
  return hstack(6, centered, std::move(parts));
}

View actionButton(std::string symbolName, const char* help, std::function<void()> action) {
  return button(symbol(std::move(symbolName)).withFont(13).padding(5), std::move(action)).help(key(help));
}

View figure(std::string name, std::uint64_t bytes) {
  return captioned(2, std::move(name), verbatim(formatBytes(bytes)).withMonospacedDigits(14));
}

View placeholderRows() {
  constexpr std::array widths{320.0, 240.0, 400.0, 180.0, 290.0};
  constexpr int rows = 9;
  std::vector<View> bars;
  for (int row = 0; row < rows; ++row) {
    const double shade = 0.12 - 0.05 * row / (rows - 1);
    auto bar = spacer(0)
                   .size(widths.at(static_cast<std::size_t>(row) % widths.size()), barHeight)
                   .background({.fill = Color(ColorRole::primary, shade), .cornerRadius = 4});
    bars.push_back(PulsingOpacity{0.07 * row}.body(std::move(bar)));
  }
  return vstack(20, leading, std::move(bars)).paddingVertical(10).fillWidth();
}

}  // namespace

FolderTab::FolderTab(const ViewContext& context)
    : context_(context), showFolderTab_(context.preferences, settings::showFolderTab) {
  if (context.isSandboxed) return;
  folders().checkFullDiskAccess();
  if (folders().items->empty()) folders().scan();
}

void FolderTab::enter(const FileLocation& location) const {
  folders().currentPath.set(location);
  folders().updateBreadcrumbs();
  folders().scan();
}

View FolderTab::body() {
  if (context_.isSandboxed) return sandboxed();
  std::vector<View> sections;
  if (!folders().hasFullDiskAccess.get()) sections.push_back(accessCard());
  sections.push_back(cardRow(views(locationCard(), volumeCard())));
  sections.push_back(navigation());
  sections.push_back(list());
  if (auto types = fileTypes(); !types.isEmpty()) sections.push_back(std::move(types));
  return dashboard(std::move(sections));
}

View FolderTab::sandboxed() const {
  auto hide =
      button(text("Hide this tab").withForeground(ColorRole::accent).paddingHorizontal(8).paddingVertical(4),
             [this] { showFolderTab_.set(false); });
  auto words = vstack(12, HorizontalAlignment::center,
                      views(symbol("lock.shield").withFont(44).withForeground(ColorRole::tertiary),
                            text("Folder browser is not available\nin the App Store version.")
                                .withFont(11)
                                .withForeground(ColorRole::secondary),
                            std::move(hide)))
                   .fillWidth(HorizontalAlignment::center)
                   .paddingVertical(60);
  return dashboard(views(SandboxFeatureBanner("Folder browser unavailable",
                                              "App Store restricts filesystem access.", context_.preferences),
                         std::move(words)));
}

View FolderTab::accessCard() const {
  auto open = button(
      text("Open Privacy Settings").withForeground(ColorRole::accent).padding(4),
      [&workspace = context_.workspace] { workspace.openSettings(platform::SettingsPanel::fileAccess); });
  auto words =
      vstack(4, leading,
             views(text("Full Disk Access needed").withFont(13, FontWeight::semibold),
                   text("Kestrune may repeatedly ask for folder permissions. Granting Full Disk Access "
                        "lets the app scan freely without interruption.")
                       .withFont(11)
                       .withForeground(ColorRole::secondary)));
  return Card{hstack(12, centered,
                     views(symbol("lock.shield").withFont(24).withForeground(ColorRole::orange),
                           std::move(words), spacer(), std::move(open)))};
}

View FolderTab::locationCard() const {
  const FileLocation& path = folders().currentPath.get();
  const FolderItems& items = folders().items.get();
  auto title = path == folders().homeDirectory() ? text("Home") : verbatim(path.shownName());
  auto summary = text("%@ folders · %@ files", {std::to_string(items.directoryCount()),
                                                std::to_string(items.size() - items.directoryCount())})
                     .withMonospacedDigits(11)
                     .withForeground(ColorRole::secondary);
  auto words = vstack(4, leading,
                      views(std::move(title)
                                .withFont(17, FontWeight::semibold)
                                .withLineLimit(1)
                                .help(verbatimText(repairedUtf8(path.path()))),
                            std::move(summary)));
  return Card{
      hstack(12, centered,
             views(symbol("folder.fill").withFont(28).withForeground(ColorRole::accent), std::move(words)))
          .fillWidth()
          .fillHeight(centered)};
}

View FolderTab::volumeCard() const {
  const DiskSnapshot& now = *context_.env.disk->current;
  const double used =
      share(static_cast<double>(now.volumeUsedBytes), static_cast<double>(now.volumeTotalBytes));
  auto figures = hstack(24, VerticalAlignment::top,
                        views(figure("Used", now.volumeUsedBytes), figure("Free", now.volumeFreeBytes),
                              figure("Total", now.volumeTotalBytes)));
  return Card{section(views(sectionHeader(label("Volume", "internaldrive")), std::move(figures).fillWidth(),
                            ThinBar{used, ColorRole::accent}))};
}

View FolderTab::navigation() const {
  const auto& trail = folders().breadcrumbs.get();
  std::vector<View> crumbs;
  for (std::size_t i = 0; i < trail.size(); ++i) {
    if (i > 0) {
      crumbs.push_back(symbol("chevron.right").withFont(9).withForeground(ColorRole::tertiary));
    }
    crumbs.push_back(crumb(trail[i], i + 1 == trail.size()).withKey(trail[i].path()));
  }
  const auto provider = context_.env.folders;
  const bool showsHidden = provider->showHidden.get();
  auto up = actionButton("arrow.up", "Go up", [provider] { provider->goUp(); });
  auto hidden =
      actionButton(showsHidden ? "eye" : "eye.slash", showsHidden ? "Hide hidden files" : "Show hidden files",
                   [provider, showsHidden] {
                     provider->showHidden.set(!showsHidden);
                     provider->scan();
                   });
  auto refresh = actionButton("arrow.clockwise", "Refresh", [provider] { provider->scan(); });
  return hstack(4, centered,
                views(hstack(4, centered, std::move(crumbs)), spacer(), std::move(up), std::move(hidden),
                      std::move(refresh)));
}

View FolderTab::crumb(const FileLocation& location, bool isLast) const {
  const bool isHome = location == folders().homeDirectory();
  auto name = isHome ? text("Home") : verbatim(location.shownName());
  auto words = hstack(4, centered,
                      views(symbol(isHome ? "house.fill" : "folder.fill").withFont(11),
                            std::move(name)
                                .withFont(12, isLast ? FontWeight::semibold : FontWeight::regular)
                                .withLineLimit(1)))
                   .withForeground(isLast ? ColorRole::primary : ColorRole::secondary)
                   .padding({.top = 3, .leading = 4, .bottom = 3, .trailing = 4});
  if (isLast) return words;
  return button(std::move(words), [this, location] { enter(location); });
}

View FolderTab::list() const {
  const FolderItems& items = folders().items.get();
  if (items.empty()) {
    if (folders().isScanning.get()) return Card{placeholderRows()};
    return Card{text("This folder is empty")
                    .withForeground(ColorRole::secondary)
                    .fillWidth(HorizontalAlignment::center)
                    .paddingVertical(30)};
  }
  const std::uint64_t largest = std::max<std::uint64_t>(items[0].sizeBytes.value_or(1), 1);
  auto header = listLine(text("Name"), text("Size share"), text("Total"))
                    .withFont(11)
                    .withForeground(ColorRole::secondary)
                    .padding({.top = 0, .leading = 0, .bottom = 6, .trailing = 0});
  RowsContent entries{
      .count = items.size(),
      .rowHeight = rowHeight,
      .row = [this, items,
              largest](std::size_t index) { return row(items[index], largest, index + 1 < items.size()); },
      .onBack = [provider = context_.env.folders] { provider->goUp(); }};
  std::vector<View> parts;
  if (folders().isComputingSizes.get()) parts.push_back(progress());
  parts.push_back(vstack(0, leading, views(std::move(header), rows(std::move(entries)))));
  return Card{vstack(10, leading, std::move(parts))};
}

View FolderTab::row(const FolderItem& item, std::uint64_t largest, bool hasDivider) const {
  const auto size = item.sizeBytes;
  const double ofLargest = share(static_cast<double>(size.value_or(0)), static_cast<double>(largest));
  const Color fill = item.isDirectory ? Color(ColorRole::accent, 0.75) : Color(ColorRole::secondary, 0.45);
  auto line = listLine(nameCell(item), shareBar(ofLargest, fill, barHeight),
                       verbatim(size ? formatBytes(*size) : "").withMonospacedDigits(14))
                  .fillHeight(centered);
  std::vector<View> layers = views(std::move(line));
  if (hasDivider) layers.push_back(divider().withOpacity(0.25).frame({}, {.fixed = 1, .min = {}, .max = {}}));
  auto whole = vstack(0, leading, std::move(layers)).contextMenu(menuOf(item));
  if (!item.isDirectory) return whole;
  return std::move(whole).onTap([this, location = item.url] { enter(location); });
}

std::vector<MenuItem> FolderTab::menuOf(const FolderItem& item) const {
  auto& workspace = context_.workspace;
  std::vector<MenuItem> items;
  if (item.isDirectory) {
    items.push_back({.title = key("Open in Finder"),
                     .symbol = "folder",
                     .action = [&workspace, at = item.url] { workspace.open(at); }});
  } else {
    items.push_back({.title = key("Reveal in Finder"),
                     .symbol = "arrow.right.circle",
                     .action = [&workspace, at = item.url] { workspace.reveal(at); }});
  }
  items.push_back({.title = key("Copy Path"),
                   .symbol = "doc.on.clipboard",
                   .action = [&pasteboard = context_.shell.pasteboard, at = item.url] {
                     pasteboard.setText(repairedUtf8(at.path()));
                   }});
  return items;
}

View FolderTab::progress() const {
  const FolderItems& items = folders().items.get();
  const std::size_t all = items.directoryCount();
  const std::size_t done = items.measuredDirectoryCount();
  auto words = all == 0 ? text("Calculating…")
                        : text("Calculating %@ of %@ folders…", {std::to_string(done), std::to_string(all)});
  const double fraction = static_cast<double>(done) / static_cast<double>(std::max<std::size_t>(all, 1));
  auto bar = shareBar(fraction, ColorRole::accent, 5).width(240).accessibilityElement(key("Sizing progress"));
  return hstack(12, centered,
                views(std::move(words).withMonospacedDigits(11).withForeground(ColorRole::secondary),
                      spacer(), std::move(bar)));
}

View FolderTab::fileTypes() {
  const FolderItems& items = folders().items.get();
  const std::pair scan(folders().scanNumber(), items.size());
  // Sizes that arrive later are those of directories, which don't count here.
  if (std::exchange(typedScan_, scan) != scan) types_ = largestFileTypes(items);
  return fileTypesCard(types_);
}

}  // namespace kestrune::ui
