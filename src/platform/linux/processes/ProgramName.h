#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kestrune::platform {

// True if a program of that file name runs scripts: a shell, Python, Java …
bool isInterpreter(std::string_view fileName);

// The argument that names what a command really starts: usually the first, or the one after an interpreter or
// `env`. Empty if no argument names it, as with a text to interpret or a launcher that has its own names for
// programs.
std::string_view programIn(std::span<const std::string> arguments);

}  // namespace kestrune::platform
