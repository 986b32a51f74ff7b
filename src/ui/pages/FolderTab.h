#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "folders/FolderProvider.h"
#include "settings/Preferences.h"
#include "ui/components/ViewContext.h"
#include "ui/pages/FileTypes.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page on which the user browses directories, the largest first.
class FolderTab final : public Component {
 public:
  // Scans, unless the result of an earlier scan is still there or the program is sandboxed.
  explicit FolderTab(const ViewContext& context);

  View body() override;

 private:
  FolderProvider& folders() const { return *context_.env.folders; }
  void enter(const platform::FileLocation& location) const;
  View sandboxed() const;
  View accessCard() const;
  View locationCard() const;
  View volumeCard() const;
  View navigation() const;
  View crumb(const platform::FileLocation& location, bool isLast) const;
  View list() const;
  View row(const FolderItem& item, std::uint64_t largest, bool hasDivider) const;
  std::vector<MenuItem> menuOf(const FolderItem& item) const;
  View progress() const;
  View fileTypes();

  ViewContext context_;
  Preference<bool> showFolderTab_;
  FileTypes types_;
  // The scan that `types_` comes from, and how many entries it had.
  std::pair<std::uint64_t, std::size_t> typedScan_{0, 0};
};

}  // namespace kestrune::ui
