#include "ui/qt/mount/Menus.h"

#include <algorithm>

#include <QIcon>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr int symbolSize = 16;

QIcon icon(const std::string& symbolName, Theme& theme, double devicePixelRatio) {
  if (symbolName.empty()) return {};
  return {theme.symbol(symbolName, symbolSize, theme.color(ColorRole::primary), devicePixelRatio)};
}

void choose(const std::vector<MenuItem>& items, const TextContent& title) {
  const auto item = std::ranges::find_if(
      items, [&](const MenuItem& each) { return !each.isSeparator && each.title == title; });
  if (item == items.end() || !item->action) return;
  const auto action = item->action;  // the call may replace the items
  action();
}

}  // namespace

QMenu* openMenu(std::function<const std::vector<MenuItem>&()> items, Theme& theme, QWidget& parent,
                QPoint place) {
  auto* menu = new QMenu(&parent);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const MenuItem& item : items()) {
    if (item.isSeparator) {
      menu->addSeparator();
      continue;
    }
    menu->addAction(icon(item.symbol, theme, parent.devicePixelRatioF()),
                    withoutMnemonic(theme.text(item.title)), &parent,
                    [items, title = item.title] { choose(items(), title); });
  }
  // An assistive tool chooses without a click, and the menu would stay.
  QObject::connect(menu, &QMenu::triggered, menu, &QMenu::close);
  menu->popup(place);
  return menu;
}

}  // namespace kestrune::ui::qt
