#include "providers/BatteryProvider.h"

#include "runtime/Checked.h"
#include "runtime/Polling.h"

namespace kestrune {
namespace {

constexpr std::int64_t minutesPerHour = 60;
constexpr std::int64_t minGoodPercent = 80;
constexpr std::int64_t minFairPercent = 50;
constexpr std::int64_t almostFullPercent = 99;  // above it, a charging battery counts as full
constexpr double temperatureUnitsPerDegree = 100.0;

BatteryCondition conditionOf(std::int64_t healthPercent) {
  if (healthPercent >= minGoodPercent) return BatteryCondition::good;
  return healthPercent >= minFairPercent ? BatteryCondition::fair : BatteryCondition::poor;
}

bool isFull(const BatterySnapshot& battery) {
  return battery.isFullyCharged || (battery.isCharging && battery.percent > almostFullPercent);
}

// The measured value if it is positive, otherwise the reported one.
std::int64_t capacity(std::optional<std::int64_t> measured, std::optional<std::int64_t> reported) {
  return measured.value_or(0) >= 1 ? *measured : reported.value_or(0);
}

void readHealth(BatterySnapshot& snapshot, std::int64_t fullCapacity, std::int64_t designCapacity) {
  snapshot.healthPercent = 100;
  if (designCapacity >= 1 && fullCapacity >= 1) {
    const auto percent =
        checkedMultiply(fullCapacity, std::int64_t{100}, "the health of the battery") / designCapacity;
    if (percent < 100) snapshot.healthPercent = percent;
  }
  snapshot.condition = conditionOf(snapshot.healthPercent);
}

void readRegistry(BatterySnapshot& snapshot, const platform::BatteryRegistry& registry) {
  snapshot.cycleCount = registry.cycleCount.value_or(0);
  snapshot.designCapacityMah = registry.designCapacity.value_or(0);
  snapshot.voltageMV = registry.voltage.value_or(0);
  snapshot.amperageMa = registry.instantAmperage.value_or(0);
  snapshot.isFullyCharged = registry.fullyCharged.value_or(false);
  if (registry.temperature) {
    snapshot.temperatureCelsius = static_cast<double>(*registry.temperature) / temperatureUnitsPerDegree;
  }
  snapshot.currentCapacityMah = capacity(registry.rawCurrentCapacity, registry.currentCapacity);
  readHealth(snapshot, capacity(registry.rawMaxCapacity, registry.maxCapacity), snapshot.designCapacityMah);
}

}  // namespace

const char* label(BatteryCondition condition) {
  switch (condition) {
    case BatteryCondition::good:
      return "Good";
    case BatteryCondition::fair:
      return "Fair";
    case BatteryCondition::poor:
      return "Poor";
  }
  return "";
}

BatterySnapshot BatterySnapshot::preview() {
  return {.percent = 87,
          .isCharging = false,
          .isFullyCharged = false,
          .timeRemainingMinutes = 252,
          .cycleCount = 42,
          .healthPercent = 98,
          .condition = BatteryCondition::good,
          .voltageMV = 12300,
          .amperageMa = -1500,
          .currentCapacityMah = 8500,
          .designCapacityMah = 8700,
          .temperatureCelsius = 28.5};
}

std::string BatterySnapshot::timeRemainingText() const {
  if (isFull(*this)) return "Fully Charged";
  if (!timeRemainingMinutes) return "Calculating…";
  std::string text;
  if (*timeRemainingMinutes >= minutesPerHour) {
    text = std::to_string(*timeRemainingMinutes / minutesPerHour) + "h ";
  }
  return text + std::to_string(*timeRemainingMinutes % minutesPerHour) + "m";
}

bool BatterySnapshot::tellsTime() const {
  return !isFull(*this) && timeRemainingMinutes.has_value();
}

BatteryProvider::BatteryProvider(MainLoop& loop, platform::PowerSources& sources)
    : loop_(loop), sources_(sources) {}

BatteryProvider::~BatteryProvider() {
  task_.cancel();
}

void BatteryProvider::start(Duration interval) {
  startPolling(loop_, shared_from_this(), task_, interval, [this] { tick(); });
}

void BatteryProvider::tick() {
  const auto snapshot = readBattery();
  if (!snapshot) return;
  current.set(*snapshot);
  history.modify([&](auto& ring) { ring.append({loop_.clock().now(), *current}); });
}

std::optional<BatterySnapshot> BatteryProvider::readBattery() {
  const auto source = sources_.powerSource();
  if (!source) return std::nullopt;
  BatterySnapshot snapshot;
  snapshot.percent = source->currentCapacity.value_or(0);
  snapshot.isCharging = source->isCharging.value_or(false);
  const auto minutes = snapshot.isCharging ? source->timeToFullCharge : source->timeToEmpty;
  if (minutes.value_or(-1) >= 1) snapshot.timeRemainingMinutes = minutes;
  readRegistry(snapshot, sources_.battery().value_or(platform::BatteryRegistry{}));
  return snapshot;
}

}  // namespace kestrune
