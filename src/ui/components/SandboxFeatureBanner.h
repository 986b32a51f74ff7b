#pragma once

#include <string>

#include "settings/Preferences.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// Takes the place of a feature that the sandbox withholds. "Dismiss" hides all banners of the program for
// good: they are empty while the shared preference is false.
struct SandboxFeatureBanner {
  std::string title;  // both localizable
  std::string description;
  Preference<bool> showHints;

  // The preferences must outlive the view.
  SandboxFeatureBanner(std::string title, std::string description, Preferences& preferences);

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
