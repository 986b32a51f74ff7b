#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kestrune::platform {

// Whether a program of that file name runs other people's programs: a shell, Python, Java …
bool isInterpreter(std::string_view fileName);

// The argument that says what a command really starts: usually the first; what an interpreter or a changed
// environment comes before; empty where the command tells nothing of the kind (a text to interpret, a program
// that starts another by its name in a list of its own).
std::string_view programIn(std::span<const std::string> arguments);

}  // namespace kestrune::platform
