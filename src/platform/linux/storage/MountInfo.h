#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune::platform {

// One mount of /proc/self/mountinfo. Texts are bytes, with the file's escapes resolved.
struct Mount {
  std::string device;  // "254:0"; the major number is 0 where no single block device is behind it
  std::string type;    // "ext4"
  std::string source;  // "/dev/vda1", "overlay", "tank/root"
};

// What is mounted at `mountPoint`; the last one where several lie above each other. Absent: nothing is, or
// the text is garbled.
std::optional<Mount> findMount(std::string_view mountInfo, std::string_view mountPoint);

// The text with `\` and three octal digits, or `\x` and two hexadecimal ones, replaced by that byte.
std::string unescaped(std::string_view text);

}  // namespace kestrune::platform
