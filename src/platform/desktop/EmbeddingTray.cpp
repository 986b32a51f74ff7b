#include "platform/desktop/EmbeddingTray.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include <QGuiApplication>
#include <xcb/xcb.h>

namespace kestrune::desktop {
namespace {

struct Free {
  void operator()(void* allocated) const { std::free(allocated); }
};

template <class Reply>
std::unique_ptr<Reply, Free> owned(Reply* reply) {
  return std::unique_ptr<Reply, Free>(reply);
}

xcb_atom_t atom(xcb_connection_t* display, const std::string& name) {
  const auto request = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const auto reply = owned(xcb_intern_atom_reply(display, request, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

int defaultScreen() {
  char* host = nullptr;
  int display = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) return 0;
  std::free(host);
  return screen;
}

}  // namespace

EmbeddingTray::EmbeddingTray(std::function<void()> appeared) : appeared_(std::move(appeared)) {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr) return;
  display_ = x11->connection();
  selection_ = atom(display_, "_NET_SYSTEM_TRAY_S" + std::to_string(defaultScreen()));
  manager_ = atom(display_, "MANAGER");
  qGuiApp->installNativeEventFilter(this);
}

EmbeddingTray::~EmbeddingTray() {
  if (display_ != nullptr) qGuiApp->removeNativeEventFilter(this);
}

bool EmbeddingTray::isPresent() const {
  if (display_ == nullptr) return false;
  const auto owner =
      owned(xcb_get_selection_owner_reply(display_, xcb_get_selection_owner(display_, selection_), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

bool EmbeddingTray::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
  // Set in events that another client sent.
  constexpr unsigned sentFlag = 0x80;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  if ((event->response_type & ~sentFlag) != XCB_CLIENT_MESSAGE) return false;
  const auto* announcement = static_cast<const xcb_client_message_event_t*>(message);
  if (announcement->type == manager_ && announcement->data.data32[1] == selection_) appeared_();
  return false;
}

}  // namespace kestrune::desktop
