#include "runtime/Published.h"

#include <algorithm>

namespace kestrune {
namespace {

// The innermost evaluation on this thread. Follows the call stack: a Scope sets it and restores it.
thread_local Dependencies* current = nullptr;

}  // namespace

Dependencies::Scope::Scope(Dependencies* dependencies) : outer_(std::exchange(current, dependencies)) {}

Dependencies::Scope::~Scope() {
  current = outer_;
}

Dependencies::~Dependencies() {
  clear();
}

void Dependencies::clear() {
  for (const Observable* source : sources_) std::erase(source->readers_, this);
  sources_.clear();
}

void Dependencies::noteRead(const Observable& source) {
  if (std::ranges::find(sources_, &source) != sources_.end()) return;
  sources_.push_back(&source);
  source.readers_.push_back(this);
}

void Dependencies::forget(const Observable& source) {
  std::erase(sources_, &source);
}

void Dependencies::sourceChanged() {
  clear();
  // The callback may destroy this object.
  const auto callback = onChange_;
  callback();
}

Observable::~Observable() {
  for (Dependencies* reader : readers_) reader->forget(*this);
}

void Observable::noteRead() const {
  if (current != nullptr) current->noteRead(*this);
}

void Observable::notifyReaders() {
  // A notified reader leaves the list, and its callback may remove others.
  while (!readers_.empty()) readers_.back()->sourceChanged();
}

}  // namespace kestrune
