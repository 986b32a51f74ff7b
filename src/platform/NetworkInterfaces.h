#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

// Cumulative bytes.
struct LinkCounters {
  std::uint64_t received = 0;
  std::uint64_t sent = 0;
};

// One interface at link level.
struct LinkEntry {
  std::string name;
  std::optional<LinkCounters> counters;  // absent: it has none
  // The bytes also pass through another interface of the list, on which this one is stacked.
  bool isCarriedByAnother = false;
};

// One IPv4 address of an interface.
struct AddressEntry {
  std::string interfaceName;
  std::string address;  // dotted
};

// Both in the order of the kernel's list.
struct InterfaceList {
  std::vector<LinkEntry> links;
  std::vector<AddressEntry> addresses;
};

// Prefixes of interface names on this platform, in addition to those that the logic knows itself.
struct InterfaceNaming {
  // Their traffic is counted on another interface too, or stays in the machine.
  std::vector<std::string> uncounted;
  std::vector<std::string> wired;
  std::vector<std::string> vpn;
};

class NetworkInterfaces {
 public:
  virtual ~NetworkInterfaces() = default;
  // Only the link level, fast enough to be read once a second. Absent: it can't be read. Main thread.
  virtual std::optional<std::vector<LinkEntry>> links() = 0;
  // Everything. Absent: it can't be read. Any thread, several at a time.
  virtual std::optional<InterfaceList> interfaces() = 0;
  // The same for the whole run. Any thread.
  virtual const InterfaceNaming& naming() const = 0;
};

}  // namespace kestrune::platform
