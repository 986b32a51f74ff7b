#pragma once

#include <string_view>

namespace kestrune {

// The file of texts that the program was built with: a JSON object that has, for each key, an object with the
// texts by language.
std::string_view catalogueData();

}  // namespace kestrune
