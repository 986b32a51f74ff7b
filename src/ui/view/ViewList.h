#pragma once

#include <utility>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui {

// The children of a stack, each moved into place (an initializer list would copy them). Takes anything that
// converts to a view.
template <class... Each>
std::vector<View> views(Each&&... each) {
  std::vector<View> list;
  list.reserve(sizeof...(each));
  (list.push_back(static_cast<View>(std::forward<Each>(each))), ...);
  return list;
}

}  // namespace kestrune::ui
