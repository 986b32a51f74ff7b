#pragma once

#include "platform/ProcessEnvironment.h"

namespace kestrune {

// True if the environment contains "APP_SANDBOX_CONTAINER_ID", with any value. Read once at startup; only
// views use the answer, samplers never do.
bool isSandboxed(platform::ProcessEnvironment& environment);

}  // namespace kestrune
