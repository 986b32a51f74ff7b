#include "ui/ViewFixture.h"

namespace kestrune::test {
namespace {

constexpr std::uint64_t kibibyte = 1024;
constexpr std::uint64_t mebibyte = 1024 * kibibyte;
constexpr std::uint64_t gibibyte = 1024 * mebibyte;

AudioSnapshot sampleAudio() {
  using Kind = AudioSnapshot::Device::TransportKind;
  const AudioSnapshot::Device speaker{.id = 1,
                                      .name = "Speaker",
                                      .transport = Kind::builtIn,
                                      .volume = 0.379F,
                                      .sampleRate = 48000,
                                      .channelCount = 2};
  const AudioSnapshot::Device microphone{.id = 2,
                                         .name = "Microphone",
                                         .transport = Kind::usb,
                                         .volume = -1,
                                         .sampleRate = 8000,
                                         .channelCount = 1};
  const AudioSnapshot::Device headset{.id = 3, .name = "Headset", .transport = Kind::bluetooth};
  return {.defaultOutput = speaker,
          .defaultInput = microphone,
          .allOutputDevices = {speaker, headset},
          .allInputDevices = {headset, microphone},
          .activeProcesses = {{.id = "a", .name = "Player", .usesOutput = true, .iconName = "player"},
                              {.id = "b", .name = "Recorder", .usesInput = true}}};
}

}  // namespace

void ViewFixture::showSample() {
  computer.chip.physical = 3;
  computer.chip.performance = 2;
  computer.chip.efficiency = 1;
  const double uptime = 86400 + 2 * 3600 + 3 * 60;
  computer.systemFacts.boot =
      static_cast<std::int64_t>(computer.clock.now().seconds + unixTimeOfReferenceDate - uptime);
  context();
  const CPUSnapshot load{.usagePercent = 12.9,
                         .coreUsages = {21.9, 32, 43},
                         .topProcesses = {{7, "editor", "/usr/bin/editor", 45.6, 5 * mebibyte},
                                          {8, "compiler", "", 6.07, 3 * gibibyte}}};
  publish(*env->cpu,
          std::vector<CPUSnapshot>{{.usagePercent = 60, .coreUsages = {}, .topProcesses = {}}, load});
  fill(env->cpu->usageHistory, {11, 22, 33});
  publish(*env->memory, std::vector<MemorySnapshot>{{.usedBytes = 8 * gibibyte, .totalBytes = 16 * gibibyte},
                                                    {.usedBytes = 12 * gibibyte,
                                                     .totalBytes = 16 * gibibyte,
                                                     .pressure = MemorySnapshot::MemoryPressure::warning,
                                                     .appBytes = 7 * gibibyte,
                                                     .wiredBytes = 3 * gibibyte,
                                                     .compressedBytes = 2 * gibibyte,
                                                     .swapUsedBytes = 6 * mebibyte,
                                                     .swapTotalBytes = 9 * gibibyte,
                                                     .topProcesses = {{9, "browser", 11 * mebibyte},
                                                                      {10, "mailer", 13 * mebibyte}}}});
  fill(env->memory->usageHistory, {44, 55, 66});
  const DiskSnapshot disk{.readBytesPerSec = 5 * 1024,
                          .writeBytesPerSec = 6 * 1024,
                          .volumeName = "Test Disk",
                          .volumeTotalBytes = 20 * gibibyte,
                          .volumeUsedBytes = 15 * gibibyte,
                          .volumeFreeBytes = 4 * gibibyte};
  publish(*env->disk,
          std::vector<DiskSnapshot>{{.readBytesPerSec = 3 * 1024, .writeBytesPerSec = 9 * 1024}, disk});
  NetworkSnapshot network{.uploadBytesPerSec = 2 * 1024,
                          .downloadBytesPerSec = 8 * 1024,
                          .ssid = "Home",
                          .interfaceName = "Wi-Fi",
                          .ipAddress = "10.0.0.7"};
  network.interfaces = {{"wlan0", "Wi-Fi", "10.0.0.7", 14 * mebibyte, 15 * mebibyte},
                        {"tun0", "VPN", {}, 16 * mebibyte, 17 * mebibyte}};
  publish(*env->network, std::vector<NetworkSnapshot>{
                             {.uploadBytesPerSec = 4 * 1024, .downloadBytesPerSec = 1024}, network});
  fill(env->network->uploadHistory, {1024, 2048, 3072});
  fill(env->network->downloadHistory, {8192, 7168, 4096});
  const BatterySnapshot battery{.percent = 62,
                                .timeRemainingMinutes = 83,
                                .cycleCount = 123,
                                .healthPercent = 87,
                                .condition = BatteryCondition::fair,
                                .voltageMV = 12000,
                                .amperageMa = -1500,
                                .currentCapacityMah = 4500,
                                .designCapacityMah = 5200,
                                .temperatureCelsius = 31.25};
  publish(*env->battery, std::vector<BatterySnapshot>{{.percent = 64}, battery});
  env->audio->current.set(sampleAudio());
  env->recorder->current = {};
  env->recorder->current.date = midnight(0);
  HourBucket hour{.hour = 6, .cpu = {.sum = 10, .count = 1, .peak = 20}};
  hour.memoryGB = {.sum = 1, .count = 1, .peak = 1.5};
  hour.networkUpBytes = 24.0 * mebibyte;
  hour.networkDownBytes = 25.0 * mebibyte;
  hour.diskReadBytes = 26.0 * mebibyte;
  hour.diskWriteBytes = 27.0 * mebibyte;
  env->recorder->current.hours = {hour};
  env->recorder->current.networkSSIDs = {
      {"Home", {.uploadBytes = 18.0 * mebibyte, .downloadBytes = 19.0 * mebibyte}},
      {"Ethernet", {.uploadBytes = 21.0 * mebibyte, .downloadBytes = 22.0 * mebibyte}}};
}

DailySummary sampleDay() {
  DailySummary day;
  HourBucket hour{.hour = 9};
  hour.cpu = {.sum = 90, .count = 2, .peak = 71.5};
  hour.memoryGB = {.sum = 8, .count = 2, .peak = 6};
  hour.batteryPercent = {.sum = 30, .count = 2, .peak = 20};
  hour.networkUpBytes = 3.0 * mebibyte;
  hour.networkDownBytes = 5.0 * mebibyte;
  hour.diskReadBytes = 7.0 * mebibyte;
  hour.diskWriteBytes = 8.0 * mebibyte;
  HourBucket next{.hour = 14};
  next.cpu = {.sum = 25, .count = 1, .peak = 26};
  next.memoryGB = {.sum = 2, .count = 1, .peak = 2};
  next.batteryPercent = {.sum = 18, .count = 1, .peak = 18};
  day.hours = {hour, next};
  day.diskTotalBytes = 10 * gibibyte;
  day.diskUsedBytes = 7 * gibibyte;
  day.diskFreeBytes = 2 * gibibyte;
  day.uptimeDays = 2;
  day.uptimeHours = 3;
  day.uptimeMinutes = 4;
  day.processes["editor"] = {.name = "editor", .cpuSum = 30, .cpuCount = 3, .memorySum = 9 * mebibyte};
  day.networkSSIDs = {{"Home", {.uploadBytes = 1.0 * mebibyte, .downloadBytes = 2.0 * mebibyte}},
                      {"Ethernet", {.uploadBytes = 10 * 1024.0, .downloadBytes = 11 * 1024.0}}};
  return day;
}

}  // namespace kestrune::test
