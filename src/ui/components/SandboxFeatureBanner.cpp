#include "ui/components/SandboxFeatureBanner.h"

#include "settings/Settings.h"
#include "ui/components/Card.h"
#include "ui/view/View.h"

namespace kestrune::ui {

SandboxFeatureBanner::SandboxFeatureBanner(std::string titleKey, std::string descriptionKey,
                                           Preferences& preferences)
    : title(std::move(titleKey)),
      description(std::move(descriptionKey)),
      showHints(preferences, settings::showHints) {}

View SandboxFeatureBanner::body() const {
  if (!showHints.get()) return {};

  auto words = vstack(4, HorizontalAlignment::leading,
                      views(text(title).withFont(13, FontWeight::semibold),
                            text(description).withFont(11).withForeground(ColorRole::secondary)));
  auto notice = hstack(
      12, VerticalAlignment::top,
      views(symbol("lock.shield.fill").withFont(24).withForeground(ColorRole::orange), std::move(words)));
  auto dismiss = button(text("Dismiss").withFont(11).withForeground(ColorRole::tertiary),
                        [preference = showHints] { preference.set(false); });
  auto actions = hstack(0, VerticalAlignment::center, views(spacer(), std::move(dismiss)));
  return Card{vstack(14, HorizontalAlignment::leading, views(std::move(notice), std::move(actions)))};
}

}  // namespace kestrune::ui
