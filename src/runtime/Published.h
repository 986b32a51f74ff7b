#pragma once

#include <concepts>
#include <functional>
#include <utility>
#include <vector>

namespace kestrune {

class Observable;

// Which observables one evaluation has read. As soon as one of them changes, `onChange` is called, once,
// until the next evaluation; it must not evaluate at once but see to it that this happens later. Main thread
// only.
class Dependencies {
 public:
  explicit Dependencies(std::function<void()> onChange) : onChange_(std::move(onChange)) {}
  ~Dependencies();
  Dependencies(const Dependencies&) = delete;
  Dependencies& operator=(const Dependencies&) = delete;

  // Forgets what was read before and evaluates `body`, noting what it reads. Evaluations nest; each notes its
  // own.
  template <class Body>
  auto track(Body&& body) {
    clear();
    const Scope scope(this);
    return std::forward<Body>(body)();
  }

  // Evaluates `body` without noting in any surrounding evaluation what it reads.
  template <class Body>
  static auto untracked(Body&& body) {
    const Scope scope(nullptr);
    return std::forward<Body>(body)();
  }

  void clear();
  bool empty() const { return sources_.empty(); }

 private:
  friend class Observable;

  // Stands for the evaluation that is under way on this thread, as a stack frame does.
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

// What Dependencies watch.
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

// A property whose readers are told of its changes. A value of a comparable type notifies only when it really
// differs, any other (a snapshot, a ring) at each assignment.
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

  // Changes the value in place, for what is too large to be copied for a small change, and notifies.
  template <class Change>
  void modify(Change&& change) {
    std::forward<Change>(change)(value_);
    notifyReaders();
  }

 private:
  T value_{};
};

}  // namespace kestrune
