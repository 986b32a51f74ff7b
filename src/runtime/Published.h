#pragma once

#include <concepts>
#include <functional>
#include <utility>
#include <vector>

namespace kestrune {

class Observable;

// Records which observables an evaluation has read. When the first of them changes, `onChange` is called, and
// then not again before the next evaluation. It must not evaluate itself, only schedule that. Main thread
// only.
class Dependencies {
 public:
  explicit Dependencies(std::function<void()> onChange) : onChange_(std::move(onChange)) {}
  ~Dependencies();
  Dependencies(const Dependencies&) = delete;
  Dependencies& operator=(const Dependencies&) = delete;

  // Forgets earlier reads, then evaluates `body` and records what it reads. Evaluations nest; each records
  // its own reads.
  template <class Body>
  auto track(Body&& body) {
    clear();
    const Scope scope(this);
    return std::forward<Body>(body)();
  }

  // Evaluates `body` without recording its reads in any enclosing evaluation.
  template <class Body>
  static auto untracked(Body&& body) {
    const Scope scope(nullptr);
    return std::forward<Body>(body)();
  }

  void clear();
  bool empty() const { return sources_.empty(); }

 private:
  friend class Observable;

  // Marks an evaluation as the current one for as long as the scope exists.
  class Scope {
   public:
    explicit Scope(Dependencies* dependencies);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Dependencies* outer_;
  };

  void noteRead(const Observable& source);
  void forget(const Observable& source);
  void sourceChanged();

  std::vector<const Observable*> sources_;
  std::function<void()> onChange_;
};

// A source of changes that Dependencies can watch.
class Observable {
 public:
  Observable() = default;
  ~Observable();
  Observable(const Observable&) = delete;
  Observable& operator=(const Observable&) = delete;

 protected:
  void noteRead() const;
  void notifyReaders();

 private:
  friend class Dependencies;
  mutable std::vector<Dependencies*> readers_;
};

// A property that notifies its readers of changes: a comparable type only if the value differs, any other
// type (a snapshot, a ring) at each assignment.
template <class T>
class Published : public Observable {
 public:
  Published() = default;
  explicit Published(T value) : value_(std::move(value)) {}

  const T& get() const {
    noteRead();
    return value_;
  }
  const T& operator*() const { return get(); }
  const T* operator->() const { return &get(); }

  void set(T value) {
    if constexpr (std::equality_comparable<T>) {
      if (value == value_) return;
    }
    value_ = std::move(value);
    notifyReaders();
  }

  // Changes the value in place and notifies. For values too large to copy for a small change.
  template <class Change>
  void modify(Change&& change) {
    std::forward<Change>(change)(value_);
    notifyReaders();
  }

 private:
  T value_{};
};

}  // namespace kestrune
