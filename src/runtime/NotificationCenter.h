#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace kestrune {

// Named messages between parts of the program that don't know each other. Delivered synchronously, in the
// order of subscription. Main thread only.
class NotificationCenter {
 public:
  using Handler = std::function<void(const std::any& object)>;

  // Unsubscribes when destroyed. May outlive the centre.
  class Subscription {
   public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

   private:
    std::shared_ptr<void> token_;
  };

  [[nodiscard]] Subscription observe(std::string name, Handler handler);
  void post(std::string_view name, const std::any& object = {});

 private:
  struct Entry {
    std::string name;
    Handler handler;
    std::weak_ptr<void> token;
  };
  std::map<std::uint64_t, Entry> entries_;
  std::uint64_t nextId_ = 0;
};

}  // namespace kestrune
