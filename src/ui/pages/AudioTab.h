#pragma once

#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page about sound: the default devices, the programs that play or record now, and all devices.
class AudioTab final : public Component {
 public:
  explicit AudioTab(const ViewContext& context) : context_(context) {}

  View body() override;

 private:
  const AudioSnapshot& audio() const { return *context_.env.audio->current; }
  View activeCard() const;
  View devicesCard() const;

  ViewContext context_;
};

}  // namespace kestrune::ui
