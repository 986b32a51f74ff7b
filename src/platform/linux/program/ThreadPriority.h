#pragma once

#include <string>

namespace kestrune::platform {

// Names the calling thread; 15 bytes show.
void nameThread(const std::string& name);

// Names the calling thread and makes it give way to what the user does: nice 10, and the disk
// only when nobody else wants it. What isn't permitted is left as it is.
void slowDownThread(const std::string& name);

}  // namespace kestrune::platform
