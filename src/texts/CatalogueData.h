#pragma once

#include <string_view>

namespace kestrune {

// The texts that the program was built with: a JSON object that maps each key to an object of texts by
// language.
std::string_view catalogueData();

}  // namespace kestrune
