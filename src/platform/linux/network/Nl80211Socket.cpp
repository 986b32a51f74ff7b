#include "platform/linux/network/Nl80211Socket.h"

#include <span>
#include <utility>

#include <linux/nl80211.h>
#include <netlink/attr.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace kestrune::platform {
namespace {

using Answer = std::vector<Nl80211Socket::Attributes>;
using Message = std::unique_ptr<nl_msg, void (*)(nl_msg*)>;
using Callbacks = std::unique_ptr<nl_cb, void (*)(nl_cb*)>;

// For each part of an answer, which the kernel prepares while the question is being sent.
constexpr timeval timeout{.tv_sec = 0, .tv_usec = 100000};

int takeMessage(nl_msg* message, void* answer) {
  nlmsghdr* const header = nlmsg_hdr(message);
  if (genlmsg_valid_hdr(header, 0) == 0) return NL_SKIP;
  genlmsghdr* const body = genlmsg_hdr(header);
  const auto attributes = std::as_bytes(std::span(reinterpret_cast<const char*>(genlmsg_attrdata(body, 0)),
                                                  static_cast<std::size_t>(genlmsg_attrlen(body, 0))));
  static_cast<Answer*>(answer)->emplace_back(attributes.begin(), attributes.end());
  return NL_OK;
}

}  // namespace

void Nl80211Socket::Closer::operator()(nl_sock* socket) const {
  nl_socket_free(socket);
}

Nl80211Socket::Nl80211Socket(std::string family) : family_(std::move(family)) {}

Nl80211Socket::~Nl80211Socket() = default;

std::optional<Answer> Nl80211Socket::list(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex) {
  constexpr int attempts = 2;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (!socket_ && !open()) return std::nullopt;
    Answer answer;
    if (ask(command, interfaceIndex, answer)) return answer;
    // The rest of this answer may still arrive there, and a module that was reloaded has another number.
    socket_.reset();
  }
  return std::nullopt;
}

bool Nl80211Socket::open() {
  std::unique_ptr<nl_sock, Closer> socket(nl_socket_alloc());
  if (!socket || genl_connect(socket.get()) < 0) return false;
  const int fd = nl_socket_get_fd(socket.get());
  if (setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout) != 0) return false;
  familyId_ = genl_ctrl_resolve(socket.get(), family_.c_str());
  if (familyId_ < 0) return false;
  socket_ = std::move(socket);
  return true;
}

bool Nl80211Socket::ask(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex, Answer& answer) {
  const Message message(nlmsg_alloc(), nlmsg_free);
  const Callbacks callbacks(nl_cb_alloc(NL_CB_DEFAULT), nl_cb_put);
  if (!message || !callbacks) return false;
  if (genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, familyId_, 0, NLM_F_DUMP, command, 0) ==
      nullptr) {
    return false;
  }
  if (interfaceIndex && nla_put_u32(message.get(), NL80211_ATTR_IFINDEX, *interfaceIndex) < 0) return false;
  nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, takeMessage, &answer);
  // The second call reads until the answer is complete.
  return nl_send_auto(socket_.get(), message.get()) >= 0 && nl_recvmsgs(socket_.get(), callbacks.get()) >= 0;
}

}  // namespace kestrune::platform
