#include "Fuzzer.h"
#include "platform/linux/storage/MountInfo.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  fuzz::require(platform::unescaped(text).size() <= text.size());
  const auto mount = platform::findMount(text, "/");
  fuzz::require(!mount || !mount->source.empty());
  // An additional mount before it doesn't change the result.
  const auto later = platform::findMount("24 1 0:22 / /elsewhere rw - proc proc rw\n" + text, "/");
  fuzz::require(mount.has_value() == later.has_value());
  fuzz::require(!mount || (mount->device == later->device && mount->type == later->type &&
                           mount->source == later->source));
  return 0;
}
