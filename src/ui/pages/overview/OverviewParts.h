#pragma once

#include <optional>
#include <string>
#include <vector>

#include "history/DailySummary.h"
#include "providers/AudioSnapshot.h"
#include "runtime/Published.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

// The cards of the overview, and what they share.
namespace kestrune::ui {

// The large figure of a card.
View headline(std::string figure);

// A figure of a card.
View figure(std::string value);

// A card of parts below each other, as large as its cell in the grid.
View gridCard(double spacing, std::vector<View> parts);

// The card of the default devices and of the programs that use audio now.
View audioCard(const AudioSnapshot& audio);

// The connection with its rates, now and in the last minute.
View liveNetworkCard(const ViewContext& context);

// The traffic of a past day, of all networks or of the selected one. The menu of the card changes the
// selection, which must outlive the view.
View pastNetworkCard(const DailySummary& record, Published<std::optional<std::string>>& selectedSSID);

// The card of storage, disk activity and uptime. With a record it shows that past day, without one the
// present.
View systemCard(const ViewContext& context, const DailySummary* record);

}  // namespace kestrune::ui
