#pragma once

#include <cstdint>
#include <functional>

#include <QAbstractNativeEventFilter>

struct xcb_connection_t;

namespace kestrune::desktop {

// Watches an X11 display for a system tray that embeds the windows of programs. Other displays have none.
// Main thread, while the application exists.
class EmbeddingTray final : public QAbstractNativeEventFilter {
 public:
  // `appeared` is called whenever a tray appears.
  explicit EmbeddingTray(std::function<void()> appeared);
  ~EmbeddingTray() override;
  EmbeddingTray(const EmbeddingTray&) = delete;
  EmbeddingTray& operator=(const EmbeddingTray&) = delete;

  // Asks the display server, and waits for its answer.
  bool isPresent() const;

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  xcb_connection_t* display_ = nullptr;
  std::uint32_t selection_ = 0;  // owned by the tray
  std::uint32_t manager_ = 0;    // type of the message that announces a new owner
  std::function<void()> appeared_;
};

}  // namespace kestrune::desktop
