#pragma once

#include <cstddef>
#include <vector>

#include "runtime/Date.h"

namespace kestrune {

// A value with the wall-clock time of the tick that produced it.
template <class Payload>
struct Sample {
  Date date;
  Payload value;
};

// A bounded time series: the newest elements, at most `capacity` of them. A plain value; a copy is a
// snapshot.
template <class Payload>
class HistoryRing {
 public:
  // Reserves the whole storage at once. The capacity is above 0.
  explicit HistoryRing(std::size_t capacity) : capacity_(capacity) { buffer_.reserve(capacity); }

  // Reserves the whole storage for the copy too, which copying the vector alone would not do.
  HistoryRing(const HistoryRing& other) : HistoryRing(other.capacity_) {
    buffer_ = other.buffer_;
    head_ = other.head_;
  }
  HistoryRing& operator=(const HistoryRing&) = default;
  HistoryRing(HistoryRing&&) noexcept = default;
  HistoryRing& operator=(HistoryRing&&) noexcept = default;
  ~HistoryRing() = default;

  // Adds one element, dropping the oldest of a full ring. Constant time, no allocation.
  void append(Sample<Payload> sample) {
    if (buffer_.size() < capacity_) {
      buffer_.push_back(std::move(sample));
      return;
    }
    buffer_[head_] = std::move(sample);
    head_ = (head_ + 1) % capacity_;
  }

  std::size_t size() const { return buffer_.size(); }
  std::size_t capacity() const { return capacity_; }

  // Element `index` in time order, starting with the oldest. Constant time, so that views needn't copy the
  // ring.
  const Sample<Payload>& operator[](std::size_t index) const {
    return buffer_[(head_ + index) % buffer_.size()];
  }

  // All elements in time order, oldest first.
  std::vector<Sample<Payload>> samples() const {
    std::vector<Sample<Payload>> result;
    result.reserve(size());
    for (std::size_t i = 0; i < size(); ++i) result.push_back((*this)[i]);
    return result;
  }

  // `samples` without the dates.
  std::vector<Payload> values() const {
    std::vector<Payload> result;
    result.reserve(size());
    for (std::size_t i = 0; i < size(); ++i) result.push_back((*this)[i].value);
    return result;
  }

 private:
  std::vector<Sample<Payload>> buffer_;
  std::size_t head_ = 0;  // where the oldest element of a full ring is stored
  std::size_t capacity_;
};

}  // namespace kestrune
