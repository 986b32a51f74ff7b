#include <span>
#include <vector>

#include "Fuzzer.h"
#include "platform/linux/network/Nl80211.h"

using namespace kestrune;

namespace {

void requirePlausible(const std::optional<std::string>& ssid) {
  if (ssid) fuzz::require(!ssid->empty() && ssid->size() <= 32);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A copy, so that reads past its end are found.
  const std::vector<std::uint8_t> copy(data, data + size);
  const auto attributes = std::as_bytes(std::span(copy));
  if (const auto interface = platform::parseRadioInterface(attributes)) {
    requirePlausible(interface->ssid);
    if (interface->name) fuzz::require(!interface->name->empty() && interface->name->size() <= size);
  }
  if (const auto network = platform::parseHeardNetwork(attributes)) requirePlausible(network->ssid);
  return 0;
}
