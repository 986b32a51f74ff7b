#include "support/ScriptedPlatform.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kestrune::test {

namespace {

constexpr double daySeconds = 86400;
constexpr double hourSeconds = 3600;

template <class Key, class Value>
std::optional<Value> found(const std::map<Key, Value>& map, const Key& key) {
  const auto entry = map.find(key);
  return entry == map.end() ? std::nullopt : std::optional(entry->second);
}

}  // namespace

void ScriptedProcessors::pass(std::int32_t total, const std::vector<std::int32_t>& busy) {
  if (!ticks) ticks.emplace();
  ticks->resize(busy.size());
  for (std::size_t i = 0; i < busy.size(); ++i) {
    (*ticks)[i].user += busy[i];
    (*ticks)[i].idle += total - busy[i];
  }
}

std::vector<platform::ProcessReading> ScriptedProcessTable::readings() {
  ++walks;
  std::vector<platform::ProcessReading> readings;
  if (!isReadable) return readings;
  for (const auto& [pid, process] : processes) {
    readings.push_back({.pid = pid,
                        .name = process.name,
                        .executablePath = process.path,
                        .residentBytes = process.info.residentBytes,
                        .userNanoseconds = process.info.userNanoseconds,
                        .systemNanoseconds = process.info.systemNanoseconds});
  }
  return readings;
}

std::optional<std::string> ScriptedEnvironment::variable(const std::string& name) {
  return found(variables, name);
}

Date ScriptedCalendar::startOfDay(Date date) {
  const double east = hoursEast * hourSeconds;
  return {std::floor((date.seconds + east) / daySeconds) * daySeconds - east};
}

int ScriptedCalendar::secondOfDay(Date date) {
  return static_cast<int>(date - startOfDay(date));
}

std::function<std::string(Date)> ScriptedCalendar::dayFormatter() {
  return [east = hoursEast * hourSeconds](Date date) {
    const auto days = static_cast<int>(std::floor((date.seconds + east) / daySeconds));
    const std::chrono::year_month_day day(std::chrono::sys_days(std::chrono::year(2001) / 1 / 1) +
                                          std::chrono::days(days));
    const auto twoDigits = [](unsigned number) {
      return (number < 10 ? "-0" : "-") + std::to_string(number);
    };
    return std::to_string(static_cast<int>(day.year())) + twoDigits(static_cast<unsigned>(day.month())) +
           twoDigits(static_cast<unsigned>(day.day()));
  };
}

std::optional<std::string> ScriptedHistoryFolder::read(const std::string& name) {
  reads.push_back(name);
  return found(files, name);
}

std::optional<std::string> ScriptedHistoryFolder::write(const std::string& name, const std::string& content) {
  ++writes;
  if (!failure) files[name] = content;
  return failure;
}

std::optional<Date> ScriptedCalendar::addingDays(Date date, int days) {
  if (isOutOfRange) return std::nullopt;
  return date + days * daySeconds;
}

void ScriptedNetworkInterfaces::setLink(const std::string& name, std::uint64_t received, std::uint64_t sent) {
  if (!list) list.emplace();
  auto link = std::ranges::find(list->links, name, &platform::LinkEntry::name);
  if (link == list->links.end()) link = list->links.insert(link, {.name = name, .counters = {}});
  link->counters = platform::LinkCounters{received, sent};
}

std::optional<platform::RunningApplication> ScriptedApplications::runningApplication(std::int32_t pid) {
  return found(running, pid);
}

std::optional<std::string> ScriptedApplications::applicationPath(const std::string& bundleIdentifier) {
  return found(paths, bundleIdentifier);
}

std::string ScriptedApplications::processName(std::int32_t pid) {
  return found(processNames, pid).value_or("");
}

void ScriptedNotifications::authorizationStatus(
    std::function<void(platform::NotificationAuthorization)> answer) {
  loop_.post([this, answer = std::move(answer)] { answer(status); });
}

void ScriptedNotifications::requestAuthorization(std::function<void()> done) {
  ++requests;
  loop_.post([this, done = std::move(done)] {
    status = statusAfterRequest.value_or(status);
    done();
  });
}

void ScriptedNotifications::deliver(const platform::UserNotification& notification,
                                    std::function<void(std::optional<std::string> error)> done) {
  deliveries.push_back(notification);
  loop_.post([error = error, done = std::move(done)] { done(error); });
}

}  // namespace kestrune::test
