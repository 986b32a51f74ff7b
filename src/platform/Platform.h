#pragma once

#include <memory>

#include "platform/Calendar.h"
#include "platform/Chip.h"
#include "platform/PreferenceStorage.h"
#include "platform/ProcessEnvironment.h"
#include "platform/ProcessTable.h"
#include "platform/Processors.h"
#include "runtime/Clock.h"
#include "runtime/WorkLane.h"

namespace kestrune::platform {

// Everything that the logic asks of a computer, made once where the program is put together and handed down.
// It outlives all that uses it.
struct Platform {
  Clock& clock;
  Calendar& calendar;
  ProcessEnvironment& environment;
  PreferenceStorage& preferences;
  Processors& processors;
  Chip& chip;
  // Shared with the lane in which the table is walked.
  std::shared_ptr<ProcessTable> processTable;
  // The lane for the walks of the process table: one thread of low priority.
  std::shared_ptr<WorkLane> processLane;
};

}  // namespace kestrune::platform
