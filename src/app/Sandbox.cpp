#include "app/Sandbox.h"

namespace kestrune {

bool isSandboxed(platform::ProcessEnvironment& environment) {
  return !environment.isEmpty() && environment.variable("APP_SANDBOX_CONTAINER_ID").has_value();
}

}  // namespace kestrune
