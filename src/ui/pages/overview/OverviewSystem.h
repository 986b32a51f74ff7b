#pragma once

#include "history/DailySummary.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The card of storage, disk activity and uptime. With a record it shows that past day, without one the
// present.
View systemCard(const ViewContext& context, const DailySummary* record);

}  // namespace kestrune::ui
