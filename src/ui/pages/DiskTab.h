#pragma once

#include "ui/components/Series.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page about the disks: what is read and written now and in the last minute, and how full the volume is.
class DiskTab final : public Component {
 public:
  explicit DiskTab(const ViewContext& context) : context_(context) {}

  View body() override;

 private:
  const DiskProvider& disk() const { return *context_.env.disk; }
  Series rates(double DiskSnapshot::*rate) const;
  View rateCard(std::string title, std::string symbolName, double DiskSnapshot::*rate) const;
  View history() const;
  View volumes() const;

  ViewContext context_;
};

}  // namespace kestrune::ui
