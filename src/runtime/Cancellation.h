#pragma once

#include <atomic>
#include <memory>

namespace kestrune {

// Lets any thread see whether a task has been cancelled. May outlive the task.
using CancellationFlag = std::shared_ptr<const std::atomic<bool>>;

}  // namespace kestrune
