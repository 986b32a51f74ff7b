#include "ui/pages/NetworkTab.h"

#include <algorithm>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/NetworkParts.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/Trends.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto trailing = HorizontalAlignment::trailing;
constexpr auto centered = VerticalAlignment::center;
constexpr double totalWidth = 90;
constexpr Color downloadColor = ColorRole::accent;
constexpr Color uploadColor = ColorRole::orange;
constexpr std::array<const char*, 5> startCaptions = {"60s ago", "5m ago", "1h ago", "12h ago", "24h ago"};

View networkLine(View name, View upload, View download) {
  return hstack(innerSpacing, centered,
                views(std::move(name).fillWidth(), std::move(upload).width(totalWidth, trailing),
                      std::move(download).width(totalWidth, trailing)));
}

View networkRow(const std::string& name, const NetworkSSIDStat& traffic) {
  auto titled = hstack(6, centered,
                       views(symbol(networkSymbol(name)).withFont(11),
                             verbatim(name).withMonospacedDigits(14, FontWeight::medium).withLineLimit(1)));
  const auto total = [](double bytes) {
    return verbatim(formatBytes(wholeBytes(bytes))).withMonospacedDigits(14);
  };
  return networkLine(std::move(titled), total(traffic.uploadBytes), total(traffic.downloadBytes))
      .paddingVertical(5)
      .withKey(name);
}

View interfaceLine(View name, View kind, View address, View sent, View received) {
  return hstack(innerSpacing, centered,
                views(std::move(name).width(60, leading), std::move(kind).width(72, leading),
                      std::move(address).fillWidth(), std::move(sent).width(80, trailing),
                      std::move(received).width(80, trailing)));
}

std::string kindSymbol(const std::string& kind) {
  if (kind == "Wi-Fi") return "wifi";
  return kind == "Ethernet" ? "cable.connector" : "lock.shield";
}

View interfaceRow(const InterfaceInfo& row) {
  auto kind = hstack(4, centered, views(symbol(kindSymbol(row.kind)).withFont(11), text(row.kind)));
  const auto total = [](std::uint64_t bytes) {
    return verbatim(formatBytes(bytes)).withMonospacedDigits(13).withForeground(ColorRole::secondary);
  };
  return interfaceLine(verbatim(row.id).withLineLimit(1), std::move(kind),
                       verbatim(row.ipAddress.value_or("")).withMonospacedDigits(13).withLineLimit(1),
                       total(row.totalSent), total(row.totalRecv))
      .paddingVertical(5)
      .withKey(row.id);
}

}  // namespace

View NetworkTab::body() {
  auto upload = rateCard("Upload", "arrow.up.circle", &NetworkSnapshot::uploadBytesPerSec);
  auto download = rateCard("Download", "arrow.down.circle", &NetworkSnapshot::downloadBytesPerSec);
  return dashboard(views(cardRow(views(std::move(upload), std::move(download))), connectionCard(),
                         networksCard(), historyCard(), interfacesCard()));
}

View NetworkTab::rateCard(std::string title, std::string symbolName, double NetworkSnapshot::*rate) const {
  const Series series = seriesOf(*network().history, rate);
  auto parts =
      rateParts(context_, label(std::move(title), std::move(symbolName)), (*network().current).*rate, series);
  if (rate == &NetworkSnapshot::downloadBytesPerSec) {
    parts.push_back(caption(text("I/O history  (last 60 s)"), ColorRole::tertiary));
  }
  return Card{section(std::move(parts)).fillHeight()};
}

View NetworkTab::connectionCard() const {
  const NetworkSnapshot& now = *network().current;
  std::vector<View> lines = views(text(now.interfaceName).withFont(15));
  if (now.ssid) lines.push_back(verbatim(*now.ssid).withFont(14).withLineLimit(1));
  if (now.ipAddress) {
    lines.push_back(
        hstack(4, centered,
               views(symbol("number").withFont(10), verbatim(*now.ipAddress).withMonospacedDigits(12)))
            .withForeground(ColorRole::secondary));
  }
  auto connection =
      hstack(12, centered,
             views(symbol(connectionSymbol(now)).withFont(28).withForeground(ColorRole::accent).width(40),
                   vstack(2, leading, std::move(lines))));
  auto reload = button(label("Reload", "arrow.clockwise").withFont(11), [provider = context_.env.network] {
                  provider->reloadConnection();
                }).help(key("Reload connection info"));
  std::vector<View> actions;
  if (now.needsLocation) actions.push_back(allowLocationButton(context_.workspace, 11));
  actions.push_back(std::move(reload));
  return Card{section(
      views(sectionHeader(label("Current Connection", "network")),
            hstack(innerSpacing, centered,
                   views(std::move(connection), spacer(), vstack(6, trailing, std::move(actions))))))};
}

View NetworkTab::networksCard() {
  const SSIDTraffic networks = context_.env.recorder->current.ssidsByTraffic();
  auto title = label("Today's Networks", "wifi.circle");
  auto header = networks.size() < 2 ? sectionHeader(std::move(title))
                                    : headerRow(std::move(title), networkSelector(networks));
  if (networks.empty()) {
    auto hint = caption(text("No network activity recorded yet today"))
                    .fillWidth(HorizontalAlignment::center)
                    .padding(8);
    return Card{section(views(std::move(header), std::move(hint)))};
  }
  const auto& selected = selectedSSID.get();
  const auto found =
      selected ? std::ranges::find(networks, *selected, &SSIDTraffic::value_type::first) : networks.end();
  std::vector<View> rows;
  if (found != networks.end()) {
    rows.push_back(networkRow(found->first, found->second));
  } else {
    for (const auto& [name, traffic] : networks) rows.push_back(networkRow(name, traffic));
  }
  return Card{
      section(views(std::move(header),
                    table(networkLine(text("Network"), text("Upload"), text("Download")), std::move(rows))))};
}

View NetworkTab::networkSelector(const SSIDTraffic& networks) {
  const auto& selected = selectedSSID.get();
  std::vector<MenuItem> items;
  const auto choice = [&](TextContent title, const std::optional<std::string>& name) {
    items.push_back({.title = std::move(title),
                     .symbol = selected == name ? "checkmark" : "",
                     .action = [this, name] { selectedSSID.set(name); }});
  };
  choice(key("All"), std::nullopt);
  for (const auto& [name, traffic] : networks) choice(verbatimText(name), name);
  auto title = selected ? verbatim(*selected).withLineLimit(1) : text("All");
  return menu(hstack(4, centered, views(std::move(title).withFont(12), symbol("chevron.down").withFont(8)))
                  .paddingHorizontal(6)
                  .paddingVertical(2),
              std::move(items));
}

View NetworkTab::historyCard() {
  const auto selected = static_cast<std::size_t>(timeRange.get());
  auto picker = timeRangePicker(netTimeRanges, selected, [this](std::size_t index) {
    timeRange.set(static_cast<NetTimeRange>(index));
  });
  const std::size_t samples = netTimeRanges.at(selected).samples;
  const Series down = thinnedSeries(*network().downloadHistory, samples);
  const Series up = thinnedSeries(*network().uploadHistory, samples);
  const DualSparklineView chart{down.values, up.values, downloadColor, uploadColor, "Dual metric trend"};
  auto graph =
      chart.body().withReadOut(readOut(context_, {"Download", down}, {"Upload", up}, formatRate)).height(60);
  auto legend =
      hstack(12, centered, views(legendEntry("Download", downloadColor), legendEntry("Upload", uploadColor)));
  return Card{section(
      views(headerRow(label("Throughput history", "chart.xyaxis.line"), std::move(picker)), std::move(graph),
            edgeCaptions(startCaptions.at(selected), "Now", ColorRole::tertiary), std::move(legend)))};
}

View NetworkTab::interfacesCard() const {
  const auto& interfaces = network().current->interfaces;
  auto header = sectionHeader(text("Interfaces"));
  if (interfaces.empty()) {
    return Card{section(views(std::move(header), caption(text("No active interfaces")).fillWidth()))};
  }
  std::vector<View> rows;
  rows.reserve(interfaces.size());
  for (const auto& row : interfaces) rows.push_back(interfaceRow(row));
  auto columns =
      interfaceLine(text("Interface"), text("Type"), text("IP Address"), text("Sent"), text("Received"));
  return Card{section(views(std::move(header), table(std::move(columns), std::move(rows))))};
}

}  // namespace kestrune::ui
