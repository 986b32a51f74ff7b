#pragma once

#include "platform/ProcessEnvironment.h"

namespace kestrune {

// Whether this is a sandboxed run: the environment holds "APP_SANDBOX_CONTAINER_ID", whatever its value. Read
// once where the program is put together; views consult the answer, samplers never do.
bool isSandboxed(platform::ProcessEnvironment& environment);

}  // namespace kestrune
