#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "folders/FolderProvider.h"
#include "settings/Preferences.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// What the files of one extension hold together. The extension is in capitals; "—" for those without one.
using FileTypes = std::vector<std::pair<std::string, std::uint64_t>>;

// At most five, the largest first. Directories and empty files don't count.
FileTypes largestFileTypes(const FolderItems& items);

// The page on which the user browses directories, the largest first.
class FolderTab final : public Component {
 public:
  // Scans unless an earlier result is there; in the sandbox it doesn't.
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
  // As worked out for that many entries of that scan.
  FileTypes types_;
  std::pair<std::uint64_t, std::size_t> typedScan_{0, 0};
};

}  // namespace kestrune::ui
