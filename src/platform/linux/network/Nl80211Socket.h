#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct nl_sock;

namespace kestrune::platform {

// Asks the kernel about wireless interfaces over a socket that stays open. One thread.
class Nl80211Socket {
 public:
  // The attributes of one message.
  using Attributes = std::vector<std::byte>;

  // The name of the family in generic netlink.
  explicit Nl80211Socket(std::string family = "nl80211");
  ~Nl80211Socket();
  Nl80211Socket(const Nl80211Socket&) = delete;
  Nl80211Socket& operator=(const Nl80211Socket&) = delete;

  // Everything that `command` lists, limited to one interface if its index is given. Absent: the kernel
  // doesn't know the family, refuses, or doesn't answer in time. Asking loads the family's module if it isn't
  // loaded.
  std::optional<std::vector<Attributes>> list(std::uint8_t command,
                                              std::optional<std::uint32_t> interfaceIndex = {});

 private:
  bool open();
  bool ask(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex,
           std::vector<Attributes>& answer);

  struct Closer {
    void operator()(nl_sock* socket) const;
  };
  std::string family_;
  std::unique_ptr<nl_sock, Closer> socket_;
  int familyId_ = 0;
};

}  // namespace kestrune::platform
