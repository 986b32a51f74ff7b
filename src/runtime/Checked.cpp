#include "runtime/Checked.h"

#include <cstdio>
#include <cstdlib>

namespace kestrune {

void endOnOverflow(const char* what) {
  std::fprintf(stderr, "kestrune: arithmetic overflow in %s\n", what);
  std::abort();
}

}  // namespace kestrune
