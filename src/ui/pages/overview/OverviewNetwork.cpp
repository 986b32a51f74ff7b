#include <algorithm>
#include <utility>
#include <vector>

#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/NetworkParts.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/pages/overview/OverviewParts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto trailing = HorizontalAlignment::trailing;
constexpr auto centered = VerticalAlignment::center;

View cardTitle() {
  return caption(label("Network", "network"));
}

View header(View control) {
  return hstack(innerSpacing, centered, views(cardTitle(), spacer(), std::move(control)));
}

View connectionIcon(std::string symbolName) {
  return symbol(std::move(symbolName)).withFont(13, FontWeight::medium).withForeground(ColorRole::accent);
}

// A figure beside an arrow, with what it is below: sent at the left, received at the right.
View trafficEnd(bool isSent, std::string value, std::string what) {
  auto arrow = symbol(isSent ? "arrow.up" : "arrow.down").withFont(10).withForeground(ColorRole::secondary);
  auto amount = figure(std::move(value));
  auto line =
      isSent ? views(std::move(arrow), std::move(amount)) : views(std::move(amount), std::move(arrow));
  return vstack(
      2, isSent ? leading : trailing,
      views(hstack(4, centered, std::move(line)), caption(text(std::move(what)), ColorRole::tertiary)));
}

View traffic(View sent, View received) {
  return hstack(innerSpacing, centered, views(std::move(sent).minWidth(75), spacer(), std::move(received)));
}

// -- Now

View liveConnectionDetail(const ViewContext& context) {
  const NetworkSnapshot& now = *context.env.network->current;
  const auto address = [&](const std::string& before) {
    return caption(verbatim(before + *now.ipAddress), ColorRole::tertiary);
  };
  if (now.ssid) {
    const auto name = [&] { return caption(verbatim(*now.ssid)); };
    if (!now.ipAddress) return name().withLineLimit(1);
    return firstFit(views(hstack(0, VerticalAlignment::firstTextBaseline, views(name(), address(" · "))),
                          vstack(1, leading, views(name().withLineLimit(1), address("")))));
  }
  if (now.needsLocation) return allowLocationButton(context.workspace, 10);
  return now.ipAddress ? address("") : View();
}

View liveConnection(const ViewContext& context) {
  const NetworkSnapshot& now = *context.env.network->current;
  return hstack(8, centered,
                views(connectionIcon(connectionSymbol(now)),
                      vstack(2, leading,
                             views(text(now.interfaceName).withFont(13, FontWeight::semibold),
                                   liveConnectionDetail(context)))));
}

View tinyLegend(std::string name, Color color) {
  return hstack(4, centered, views(symbol("circle.fill").withForeground(color), text(std::move(name))))
      .withFont(9)
      .withForeground(ColorRole::secondary);
}

View throughput(const ViewContext& context) {
  const auto& history = *context.env.network->history;
  const Series down = seriesOf(history, &NetworkSnapshot::downloadBytesPerSec);
  const Series up = seriesOf(history, &NetworkSnapshot::uploadBytesPerSec);
  const DualSparklineView chart{down.values, up.values, ColorRole::accent, ColorRole::orange,
                                "Dual metric trend"};
  auto graph = chart.body().withReadOut(readOut(context, {"Up", up}, {"Down", down}, formatRate)).height(24);
  return vstack(4, leading,
                views(std::move(graph), hstack(10, centered,
                                               views(tinyLegend("Up", Color(ColorRole::orange, 0.75)),
                                                     tinyLegend("Down", ColorRole::accent)))));
}

// -- A past day

View filterMenu(const SSIDTraffic& networks, Published<std::optional<std::string>>& selection) {
  const auto& selected = selection.get();
  std::vector<MenuItem> items;
  items.push_back({.title = key("All Networks"),
                   .symbol = selected ? "network" : "checkmark",
                   .action = [&selection] { selection.set(std::nullopt); }});
  if (networks.size() >= 2) items.push_back({.title = {}, .symbol = {}, .isSeparator = true, .action = {}});
  for (const auto& [name, traffic] : networks) {
    items.push_back({.title = verbatimText(name),
                     .symbol = selected == name ? "checkmark" : networkSymbol(name),
                     .action = [&selection, name] { selection.set(name); }});
  }
  auto face = hstack(3, centered,
                     views(symbol("wifi.circle").withFont(11, FontWeight::medium),
                           symbol("chevron.down").withFont(8, FontWeight::medium)))
                  .withForeground(ColorRole::secondary);
  return menu(std::move(face), std::move(items)).help(key("Filter by network"));
}

View pastConnection(const SSIDTraffic& networks, const std::optional<std::string>& selected) {
  const auto only = networks.size() == 1 ? std::optional(networks.front().first) : std::nullopt;
  const auto named = selected ? selected : only;
  const bool isKnown =
      selected && std::ranges::find(networks, *selected, &SSIDTraffic::value_type::first) != networks.end();
  auto name = isKnown ? verbatim(*selected) : (only ? verbatim(*only) : text("Multiple Networks"));
  return hstack(8, centered,
                views(connectionIcon(named ? networkSymbol(*named) : "network"),
                      std::move(name).withFont(13, FontWeight::semibold).withLineLimit(1)));
}

View pastTraffic(const DailySummary& record, const SSIDTraffic& networks,
                 const std::optional<std::string>& selected) {
  const auto found =
      selected ? std::ranges::find(networks, *selected, &SSIDTraffic::value_type::first) : networks.end();
  const bool isFiltered = found != networks.end();
  const double up = isFiltered ? found->second.uploadBytes : record.totalNetworkUpBytes();
  const double down = isFiltered ? found->second.downloadBytes : record.totalNetworkDownBytes();
  return traffic(trafficEnd(true, formatBytes(wholeBytes(up)), "Sent"),
                 trafficEnd(false, formatBytes(wholeBytes(down)), "Received"));
}

}  // namespace

View liveNetworkCard(const ViewContext& context) {
  const NetworkSnapshot& now = *context.env.network->current;
  auto reload =
      button(symbol("arrow.clockwise").withFont(11, FontWeight::medium).withForeground(ColorRole::secondary),
             [provider = context.env.network] { provider->reloadConnection(); })
          .help(key("Reload network info"));
  return gridCard(10, views(header(std::move(reload)), liveConnection(context), divider(),
                            traffic(trafficEnd(true, formatRate(now.uploadBytesPerSec), "Upload"),
                                    trafficEnd(false, formatRate(now.downloadBytesPerSec), "Download")),
                            throughput(context)));
}

View pastNetworkCard(const DailySummary& record, Published<std::optional<std::string>>& selectedSSID) {
  const SSIDTraffic networks = record.ssidsByTraffic();
  const auto& selected = selectedSSID.get();
  return gridCard(
      10, views(networks.empty() ? cardTitle() : header(filterMenu(networks, selectedSSID)),
                pastConnection(networks, selected), divider(), pastTraffic(record, networks, selected)));
}

}  // namespace kestrune::ui
