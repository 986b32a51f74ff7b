#include "platform/linux/network/Nl80211.h"

#include <algorithm>
#include <cstring>

#include <linux/netlink.h>
#include <linux/nl80211.h>

namespace kestrune::platform {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t maxSsidLength = 32;

std::string textOf(Bytes bytes) {
  std::string text(bytes.size(), '\0');
  std::ranges::transform(bytes, text.begin(), [](std::byte byte) { return static_cast<char>(byte); });
  return text;
}

// Calls `visit(type, value)` for each complete attribute.
void forEachAttribute(Bytes attributes, const auto& visit) {
  nlattr header{};
  while (attributes.size() >= NLA_HDRLEN) {
    std::memcpy(&header, attributes.data(), sizeof header);
    const std::size_t length = header.nla_len;
    if (length < NLA_HDRLEN || length > attributes.size()) return;
    visit(static_cast<int>(header.nla_type & NLA_TYPE_MASK),
          attributes.subspan(NLA_HDRLEN, length - NLA_HDRLEN));
    const std::size_t padded = (length + NLA_ALIGNTO - 1) / NLA_ALIGNTO * NLA_ALIGNTO;
    attributes = attributes.subspan(std::min(padded, attributes.size()));
  }
}

std::optional<std::uint32_t> number(Bytes value) {
  std::uint32_t result = 0;
  if (value.size() != sizeof result) return std::nullopt;
  std::memcpy(&result, value.data(), sizeof result);
  return result;
}

// Up to the terminating NUL.
std::optional<std::string> name(Bytes value) {
  std::string text = textOf(value);
  text.resize(std::min(text.find('\0'), text.size()));
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

// A hidden network sends an empty name, or zeros for the bytes of its name.
std::optional<std::string> ssid(Bytes value) {
  const bool isHidden = std::ranges::all_of(value, [](std::byte byte) { return byte == std::byte{0}; });
  return isHidden || value.size() > maxSsidLength ? std::nullopt : std::optional(textOf(value));
}

// The SSID among the information elements of a beacon. An element is a byte with its type, a byte with its
// length, and the value.
std::optional<std::string> ssidElement(Bytes elements) {
  constexpr std::byte ssidType{0};
  while (elements.size() >= 2) {
    const auto length = std::to_integer<std::size_t>(elements[1]);
    if (length > elements.size() - 2) return std::nullopt;
    if (elements[0] == ssidType) return ssid(elements.subspan(2, length));
    elements = elements.subspan(2 + length);
  }
  return std::nullopt;
}

HeardNetwork parseNetwork(Bytes attributes) {
  HeardNetwork network;
  std::optional<std::string> ofBeacon;
  forEachAttribute(attributes, [&](int type, Bytes value) {
    switch (type) {
      case NL80211_BSS_STATUS:
        network.isAssociated = number(value) == NL80211_BSS_STATUS_ASSOCIATED;
        break;
      // Of the last probe response, in which even a hidden network sends its name, or else of the beacon.
      case NL80211_BSS_INFORMATION_ELEMENTS:
        network.ssid = ssidElement(value);
        break;
      case NL80211_BSS_BEACON_IES:
        ofBeacon = ssidElement(value);
        break;
      default:
        break;
    }
  });
  if (!network.ssid) network.ssid = std::move(ofBeacon);
  return network;
}

}  // namespace

std::optional<RadioInterface> parseRadioInterface(Bytes attributes) {
  RadioInterface interface;
  std::optional<std::uint32_t> mode;
  forEachAttribute(attributes, [&](int type, Bytes value) {
    switch (type) {
      case NL80211_ATTR_IFINDEX:
        interface.index = number(value).value_or(0);
        break;
      case NL80211_ATTR_IFNAME:
        interface.name = name(value);
        break;
      case NL80211_ATTR_IFTYPE:
        mode = number(value);
        break;
      case NL80211_ATTR_SSID:
        interface.ssid = ssid(value);
        break;
      default:
        break;
    }
  });
  if (!mode) return std::nullopt;
  interface.isClient = *mode == NL80211_IFTYPE_STATION;
  return interface;
}

std::optional<HeardNetwork> parseHeardNetwork(Bytes attributes) {
  std::optional<HeardNetwork> network;
  forEachAttribute(attributes, [&](int type, Bytes value) {
    if (type == NL80211_ATTR_BSS) network = parseNetwork(value);
  });
  return network;
}

}  // namespace kestrune::platform
