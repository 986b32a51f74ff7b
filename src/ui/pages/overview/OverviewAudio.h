#pragma once

#include "providers/AudioSnapshot.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The card of the default devices and of the programs that use audio now.
View audioCard(const AudioSnapshot& audio);

}  // namespace kestrune::ui
