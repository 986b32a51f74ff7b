#include "ui/ViewFixture.h"

namespace kestrune::test {
namespace {

constexpr std::uint64_t kibibyte = 1024;
constexpr std::uint64_t mebibyte = 1024 * kibibyte;
constexpr std::uint64_t gibibyte = 1024 * mebibyte;

NetworkSSIDStat traffic(double upload, double download) {
  return {upload * mebibyte, download * mebibyte};
}

AudioSnapshot sampleAudio() {
  using Kind = AudioSnapshot::Device::TransportKind;
  const AudioSnapshot::Device speaker{1, "Speaker", Kind::builtIn, 0.379F, false, 48000, 2};
  const AudioSnapshot::Device microphone{2, "Microphone", Kind::usb, -1, false, 8000, 1};
  const AudioSnapshot::Device headset{.id = 3, .name = "Headset", .transport = Kind::bluetooth};
  return {speaker,
          microphone,
          {speaker, headset},
          {headset, microphone},
          {{.id = "a", .name = "Player", .usesOutput = true, .iconName = "player"},
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
  const CPUSnapshot load{
      12.9,
      {21.9, 32, 43},
      {{7, "editor", "/usr/bin/editor", 45.6, 5 * mebibyte}, {8, "compiler", "", 6.07, 3 * gibibyte}}};
  publish(*env->cpu, {60, {}, {}}, load);
  fill(env->cpu->usageHistory, {11, 22, 33});
  MemorySnapshot memory{12 * gibibyte, 16 * gibibyte, MemorySnapshot::MemoryPressure::warning,
                        7 * gibibyte,  3 * gibibyte,  2 * gibibyte,
                        6 * mebibyte,  9 * gibibyte,  {}};
  memory.topProcesses = {{9, "browser", 11 * mebibyte}, {10, "mailer", 13 * mebibyte}};
  publish(*env->memory, {.usedBytes = 8 * gibibyte, .totalBytes = 16 * gibibyte}, memory);
  fill(env->memory->usageHistory, {44, 55, 66});
  const DiskSnapshot disk{5 * 1024, 6 * 1024, "Test Disk", 20 * gibibyte, 15 * gibibyte, 4 * gibibyte};
  publish(*env->disk, {.readBytesPerSec = 3 * 1024, .writeBytesPerSec = 9 * 1024}, disk);
  NetworkSnapshot network{2 * 1024, 8 * 1024, "Home", "Wi-Fi", false, "10.0.0.7", {}};
  network.interfaces = {{"wlan0", "Wi-Fi", "10.0.0.7", 14 * mebibyte, 15 * mebibyte},
                        {"tun0", "VPN", {}, 16 * mebibyte, 17 * mebibyte}};
  publish(*env->network, {.uploadBytesPerSec = 4 * 1024, .downloadBytesPerSec = 1024}, network);
  fill(env->network->uploadHistory, {1024, 2048, 3072});
  fill(env->network->downloadHistory, {8192, 7168, 4096});
  const auto fair = BatteryCondition::fair;
  publish(*env->battery, {.percent = 64},
          BatterySnapshot{62, false, false, 83, 123, 87, fair, 12000, -1500, 4500, 5200, 31.25});
  env->audio->current.set(sampleAudio());
  DailySummary today{.date = midnight(0)};
  today.hours = {
      {6, {10, 1, 20}, {1, 1, 1.5}, {}, 24.0 * mebibyte, 25.0 * mebibyte, 26.0 * mebibyte, 27.0 * mebibyte}};
  today.networkSSIDs = {{"Home", traffic(18, 19)}, {"Ethernet", traffic(21, 22)}};
  env->recorder->current = today;
}

DailySummary sampleDay() {
  DailySummary day;
  day.hours = {{9,
                {90, 2, 71.5},
                {8, 2, 6},
                {30, 2, 20},
                3.0 * mebibyte,
                5.0 * mebibyte,
                7.0 * mebibyte,
                8.0 * mebibyte},
               {14, {25, 1, 26}, {2, 1, 2}, {18, 1, 18}}};
  day.diskTotalBytes = 10 * gibibyte;
  day.diskUsedBytes = 7 * gibibyte;
  day.diskFreeBytes = 2 * gibibyte;
  day.uptimeDays = 2;
  day.uptimeHours = 3;
  day.uptimeMinutes = 4;
  day.processes["editor"] = {"editor", 30, 3, 9 * mebibyte};
  day.networkSSIDs = {{"Home", traffic(1, 2)}, {"Ethernet", {10 * 1024.0, 11 * 1024.0}}};
  return day;
}

}  // namespace kestrune::test
