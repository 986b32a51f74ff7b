#pragma once

#include <string>
#include <string_view>

#include "platform/Application.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"

namespace kestrune::ui {

// Posted, without an object, when the program becomes active.
inline constexpr std::string_view didBecomeActiveNotification = "Kestrune.didBecomeActive";

// The program around the views, as the settings show and change it.
struct Shell {
  platform::Application& application;
  platform::LoginItem& loginItem;
  platform::Pasteboard& pasteboard;
  std::string language;       // in use: "en" or "es"
  std::string version;        // "1.2.0 (45)"
  std::string systemVersion;  // of the operating system
};

}  // namespace kestrune::ui
