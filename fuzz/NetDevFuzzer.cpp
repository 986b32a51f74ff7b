#include "Fuzzer.h"
#include "platform/linux/network/NetDev.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto links = platform::parseNetDev(text);
  for (const auto& link : links) {
    fuzz::require(!link.name.empty() && text.find(link.name + ":") != std::string::npos);
    fuzz::require(!link.isCarriedByAnother);
  }
  // A truncated text yields the same first links.
  const auto ofPart = platform::parseNetDev(std::string_view(text).substr(0, size / 2));
  fuzz::require(ofPart.size() <= links.size());
  for (std::size_t i = 0; i < ofPart.size(); ++i) {
    fuzz::require(ofPart[i].name == links[i].name);
    fuzz::require(ofPart[i].counters.has_value() == links[i].counters.has_value());
    if (!links[i].counters) continue;
    fuzz::require(ofPart[i].counters->received == links[i].counters->received);
    fuzz::require(ofPart[i].counters->sent == links[i].counters->sent);
  }
  return 0;
}
