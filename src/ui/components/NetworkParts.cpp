#include "ui/components/NetworkParts.h"

#include "ui/view/View.h"

namespace kestrune::ui {

std::string connectionSymbol(const NetworkSnapshot& network) {
  if (network.ssid || network.interfaceName == "Wi-Fi") return "wifi";
  return network.interfaceName == "Ethernet" ? "cable.connector" : "wifi.slash";
}

std::string networkSymbol(const std::string& name) {
  return name == "Ethernet" ? "cable.connector" : "wifi";
}

View allowLocationButton(platform::Workspace& workspace, double symbolSize) {
  auto title = hstack(4, VerticalAlignment::center,
                      views(symbol("location.slash"), text("Allow location for Wi-Fi name")))
                   .withFont(symbolSize)
                   .withForeground(ColorRole::orange);
  return button(std::move(title),
                [&workspace] { workspace.openSettings(platform::SettingsPanel::location); });
}

std::uint64_t wholeBytes(double bytes) {
  constexpr double limit = 18446744073709549568.0;  // the largest double below 2^64
  if (!(bytes > 0)) return 0;
  return static_cast<std::uint64_t>(std::min(bytes, limit));
}

}  // namespace kestrune::ui
