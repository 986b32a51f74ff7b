#pragma once

#include <string>

namespace kestrune::platform {

// Names the calling thread, truncated to 15 bytes.
void nameThread(const std::string& name);

// Names the calling thread and makes it yield to the user's work: nice 10, and disk access only when the disk
// is idle. What isn't permitted is silently left as it is.
void slowDownThread(const std::string& name);

}  // namespace kestrune::platform
