#pragma once

#include <atomic>
#include <memory>

namespace kestrune {

// Tells whoever works for a task, on any thread, that the task has been cancelled. It outlives the task.
using CancellationFlag = std::shared_ptr<const std::atomic<bool>>;

}  // namespace kestrune
