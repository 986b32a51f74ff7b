#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kestrune::platform {

// One wireless interface, as nl80211 tells of it.
struct RadioInterface {
  std::optional<std::string> name;  // absent: it is no network interface, as that for peer-to-peer management
  std::uint32_t index = 0;          // of the network interface; 0: it is none
  bool isClient = false;            // meant to be the client of an access point, associated or not
  std::optional<std::string> ssid;  // of the network it is part of; absent: none, hidden, or an old kernel
};

// One network that was heard.
struct HeardNetwork {
  bool isAssociated = false;        // the interface that heard it is its client
  std::optional<std::string> ssid;  // absent: hidden
};

// Both take the attributes of one message, which may be cut or make no sense anywhere. Numbers are in the
// machine's byte order. Absent: the message isn't of that sort.
std::optional<RadioInterface> parseRadioInterface(std::span<const std::byte> attributes);
std::optional<HeardNetwork> parseHeardNetwork(std::span<const std::byte> attributes);

}  // namespace kestrune::platform
