#pragma once

#include <functional>

#include "settings/Preferences.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The popover of the tray item: the chosen figures, the busiest processes and the program's commands.
class MenuBarPopover final : public Component {
 public:
  // What the shell does for the popover.
  struct Commands {
    std::function<void()> openMainWindow;
    std::function<void()> terminate;
  };

  MenuBarPopover(const ViewContext& context, Commands commands);

  View body() override;

 private:
  View metrics() const;
  View cpuRow() const;
  View memoryRow() const;
  View diskRow() const;
  View networkRow() const;
  View processes() const;
  View commandColumn() const;

  ViewContext context_;
  Commands commands_;
  Preference<bool> showCPU_;
  Preference<bool> showMemory_;
  Preference<bool> showDisk_;
  Preference<bool> showNetwork_;
  Preference<bool> showProcesses_;
  Preference<bool> showIP_;
  Preference<bool> showAudio_;
};

// The text of the audio row: the programs that use audio, else the output device with its volume.
TextContent audioSummary(const AudioSnapshot& audio);

}  // namespace kestrune::ui
