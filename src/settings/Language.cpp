#include "settings/Language.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

constexpr const char* languagesKey = "AppleLanguages";

}  // namespace

std::string currentLanguage(const Preferences& preferences,
                            const std::vector<std::string>& desktopLanguages) {
  const auto chosen = preferences.value<std::vector<std::string>>(languagesKey);
  const auto& languages = chosen ? *chosen : desktopLanguages;
  return !languages.empty() && languages.front().starts_with("es") ? "es" : "en";
}

void setLanguage(const std::string& code, MainLoop& loop, Preferences& preferences,
                 platform::Application& application) {
  preferences.set(languagesKey, std::vector<std::string>{code});
  application.openNewInstance();
  loop.after(1s, [&application] { application.terminate(); });
}

}  // namespace kestrune
