#include <gtest/gtest.h>

#include "core/Sandbox.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

TEST(Sandbox, isToldByThePresenceOfTheVariable) {
  test::ScriptedEnvironment environment;
  EXPECT_FALSE(isSandboxed(environment));
  environment.variables["APP_SANDBOX_CONTAINER_ID"] = "";
  EXPECT_TRUE(isSandboxed(environment));
  environment.variables["APP_SANDBOX_CONTAINER_ID"] = "org.example.Other";
  EXPECT_TRUE(isSandboxed(environment));
  environment.variables.clear();
  EXPECT_FALSE(isSandboxed(environment));
}

}  // namespace
}  // namespace kestrune
