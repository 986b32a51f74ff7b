#pragma once

#include <utility>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::test {

// The children of a stack, in one expression.
template <class... Views>
std::vector<ui::View> views(Views... each) {
  std::vector<ui::View> all;
  (all.push_back(std::move(each)), ...);
  return all;
}

}  // namespace kestrune::test
