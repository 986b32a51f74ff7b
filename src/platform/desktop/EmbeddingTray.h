#pragma once

#include <cstdint>
#include <functional>

#include <QAbstractNativeEventFilter>

struct xcb_connection_t;

namespace kestrune::desktop {

// Watches an X display for a tray that embeds the windows of programs. On other displays there is none. Main
// thread, while the application lives.
class EmbeddingTray final : public QAbstractNativeEventFilter {
 public:
  // `present` is called when a tray turns up.
  explicit EmbeddingTray(std::function<void()> present);
  ~EmbeddingTray() override;
  EmbeddingTray(const EmbeddingTray&) = delete;
  EmbeddingTray& operator=(const EmbeddingTray&) = delete;

  // Asks the display.
  bool isPresent() const;

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  xcb_connection_t* display_ = nullptr;
  std::uint32_t selection_ = 0;  // what a tray owns
  std::uint32_t manager_ = 0;    // the kind of message in which a new owner tells of itself
  std::function<void()> present_;
};

}  // namespace kestrune::desktop
