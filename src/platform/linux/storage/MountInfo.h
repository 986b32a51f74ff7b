#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune::platform {

// One mount of /proc/self/mountinfo. Texts are bytes, unescaped.
struct Mount {
  std::string device;  // "254:0"; the major number is 0 if there is no single block device
  std::string type;    // "ext4"
  std::string source;  // "/dev/vda1", "overlay", "tank/root"
};

// The mount at `mountPoint`, the topmost if there are several. Absent: nothing is mounted there, or the text
// is invalid.
std::optional<Mount> findMount(std::string_view mountInfo, std::string_view mountPoint);

// The text with `\` and three octal digits, or `\x` and two hexadecimal digits, replaced by that byte.
std::string unescaped(std::string_view text);

}  // namespace kestrune::platform
