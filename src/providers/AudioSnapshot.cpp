#include "providers/AudioSnapshot.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "runtime/Utf8.h"

namespace kestrune {
namespace {

using platform::AudioClient;
using platform::AudioDevice;
using platform::AudioScope;
using platform::RunningApplication;
using Device = AudioSnapshot::Device;
using AudioProcess = AudioSnapshot::AudioProcess;

enum class Direction { output, input };

constexpr const char* unnamedProcess = "System Audio Process";
constexpr int asciiCaseBit = 0x20;
constexpr std::size_t maxProcessNameBytes = 16;

const AudioScope& scopeOf(const AudioDevice& device, Direction direction) {
  return direction == Direction::input ? device.input : device.output;
}

float volumeOf(const AudioScope& scope) {
  if (scope.mainVolume) return *scope.mainVolume;
  if (scope.volume) return *scope.volume;
  return scope.firstChannelVolume.value_or(-1.0F);
}

std::int64_t channelCountOf(const AudioScope& scope) {
  std::int64_t count = 0;
  for (const std::uint32_t channels : scope.bufferChannels) count += channels;
  return count;
}

std::optional<Device> readDevice(const AudioDevice& device, Direction direction) {
  if (!device.name) return std::nullopt;
  const AudioScope& scope = scopeOf(device, direction);
  return Device{.id = device.id,
                .name = repairedUtf8(*device.name),
                .transport = device.transport.value_or(Device::TransportKind::unknown),
                .volume = volumeOf(scope),
                .isMuted = scope.isMuted.value_or(false),
                .sampleRate = device.sampleRate.value_or(0),
                .channelCount = channelCountOf(scope)};
}

std::optional<Device> defaultDevice(const platform::AudioCensus& census, std::uint32_t id,
                                    Direction direction) {
  if (id == 0) return std::nullopt;
  const auto found = std::ranges::find(census.devices, id, &AudioDevice::id);
  return found == census.devices.end() ? std::nullopt : readDevice(*found, direction);
}

std::vector<Device> readDevices(const platform::AudioCensus& census, Direction direction) {
  std::vector<Device> devices;
  for (const auto& device : census.devices) {
    if (!scopeOf(device, direction).hasStreams) continue;
    if (auto read = readDevice(device, direction)) devices.push_back(*std::move(read));
  }
  return devices;
}

bool isAsciiLetter(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

// The first letter of each word upper, the rest lower. Identifiers are ASCII; other bytes stay as they are.
std::string capitalized(std::string_view text) {
  std::string result(text);
  bool isInWord = false;
  for (char& byte : result) {
    if (isAsciiLetter(byte)) {
      byte = static_cast<char>(isInWord ? byte | asciiCaseBit : byte & ~asciiCaseBit);
      isInWord = true;
    } else if (byte == ' ' || byte == '\t' || byte == '\n') {
      isInWord = false;
    }
  }
  return result;
}

// The last path component without its extension.
std::string stem(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  const auto slash = path.rfind('/');
  if (slash != std::string_view::npos) path.remove_prefix(slash + 1);
  const auto dot = path.rfind('.');
  if (dot != std::string_view::npos && dot != 0) path = path.substr(0, dot);
  return std::string(path);
}

std::string processName(std::int32_t pid, platform::Applications& applications) {
  if (pid < 1) return unnamedProcess;
  const std::string bytes = applications.processName(pid);
  const std::string name = repairedUtf8(std::string_view(bytes).substr(0, maxProcessNameBytes));
  return name.empty() ? unnamedProcess : name;
}

std::string nameOfIdentifier(const std::string& bundleID, platform::Applications& applications) {
  if (const auto path = applications.applicationPath(bundleID)) {
    if (auto name = repairedUtf8(stem(*path)); !name.empty()) return name;
  }
  const auto dot = bundleID.rfind('.');
  const auto piece = dot == std::string::npos ? bundleID : bundleID.substr(dot + 1);
  return piece.empty() ? bundleID : capitalized(piece);
}

std::string displayName(const std::optional<std::string>& bundleID,
                        const std::optional<RunningApplication>& application, std::int32_t pid,
                        platform::Applications& applications) {
  if (application && !application->localizedName.empty()) return repairedUtf8(application->localizedName);
  if (!bundleID || bundleID->empty()) return processName(pid, applications);
  return nameOfIdentifier(*bundleID, applications);
}

// Clients of one application, such as its helper processes, form one row.
std::vector<AudioProcess> readProcesses(const std::vector<AudioClient>& clients,
                                        platform::Applications& applications) {
  std::map<std::string, AudioProcess> rows;
  for (const auto& client : clients) {
    if (!client.isRunningInput && !client.isRunningOutput) continue;
    std::optional<RunningApplication> application;
    if (client.pid >= 1) application = applications.runningApplication(client.pid);
    std::optional<std::string> bundleID;
    if (application && application->bundleIdentifier) bundleID = repairedUtf8(*application->bundleIdentifier);
    const std::string key = bundleID ? *bundleID : "proc-" + std::to_string(client.id);
    const auto [row, isNew] = rows.try_emplace(key);
    if (isNew) {
      row->second = {.id = key,
                     .name = displayName(bundleID, application, client.pid, applications),
                     .bundleID = bundleID,
                     .pid = client.pid >= 1 ? std::optional(client.pid) : std::nullopt,
                     .iconName = application ? application->iconName : std::nullopt};
    }
    row->second.usesInput |= client.isRunningInput;
    row->second.usesOutput |= client.isRunningOutput;
  }

  std::vector<AudioProcess> processes;
  processes.reserve(rows.size());
  for (auto& [key, row] : rows) processes.push_back(std::move(row));
  std::ranges::stable_sort(processes, {}, &AudioProcess::name);
  return processes;
}

}  // namespace

AudioSnapshot audioSnapshot(const platform::AudioCensus& census, platform::Applications& applications) {
  return {.defaultOutput = defaultDevice(census, census.defaultOutput, Direction::output),
          .defaultInput = defaultDevice(census, census.defaultInput, Direction::input),
          .allOutputDevices = readDevices(census, Direction::output),
          .allInputDevices = readDevices(census, Direction::input),
          .activeProcesses = readProcesses(census.clients, applications)};
}

}  // namespace kestrune
