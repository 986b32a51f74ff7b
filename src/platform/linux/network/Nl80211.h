#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kestrune::platform {

// One wireless interface, as nl80211 reports it.
struct RadioInterface {
  std::optional<std::string> name;  // absent: not a network interface (peer-to-peer management)
  std::uint32_t index = 0;          // of the network interface; 0: it isn't one
  bool isClient = false;            // in client mode, connected or not
  std::optional<std::string> ssid;  // absent: not connected, hidden, or an old kernel
};

// One network that was heard over the air.
struct HeardNetwork {
  bool isAssociated = false;        // the interface is connected to it
  std::optional<std::string> ssid;  // absent: hidden
};

// Both take the attributes of one message, which may be truncated or invalid. Numbers are in the machine's
// byte order. Absent: the message is of another kind.
std::optional<RadioInterface> parseRadioInterface(std::span<const std::byte> attributes);
std::optional<HeardNetwork> parseHeardNetwork(std::span<const std::byte> attributes);

}  // namespace kestrune::platform
