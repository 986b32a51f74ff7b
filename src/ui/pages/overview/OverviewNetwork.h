#pragma once

#include <optional>
#include <string>

#include "history/DailySummary.h"
#include "runtime/Published.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The connection with its rates, now and in the last minute.
View liveNetworkCard(const ViewContext& context);

// The traffic of a past day, of all networks or of the selected one. The menu of the card changes the
// selection, which must outlive the view.
View pastNetworkCard(const DailySummary& record, Published<std::optional<std::string>>& selectedSSID);

}  // namespace kestrune::ui
