#pragma once

#include "providers/AudioSnapshot.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The card that shows the default devices and who uses sound now, beside each other.
View audioCard(const AudioSnapshot& audio);

}  // namespace kestrune::ui
