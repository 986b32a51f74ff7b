#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "folders/FolderItems.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The total size of the files of each extension. The extension is in capitals; "—" for files without one.
using FileTypes = std::vector<std::pair<std::string, std::uint64_t>>;

// At most five, the largest first. Directories and empty files don't count.
FileTypes largestFileTypes(const FolderItems& items);

// One line for each type; empty without types.
View fileTypesCard(const FileTypes& types);

}  // namespace kestrune::ui
