#include "SnapshotJson.h"

namespace kestrune::tools {
namespace {

using Json = nlohmann::ordered_json;

template <class T>
Json optional(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

template <class T, class Convert>
Json list(const std::vector<T>& values, Convert convert) {
  Json result = Json::array();
  for (const T& value : values) result.push_back(convert(value));
  return result;
}

Json cpuJson(const CPUSnapshot& cpu) {
  return {{"usagePercent", cpu.usagePercent},
          {"coreUsages", cpu.coreUsages},
          {"topProcesses", list(cpu.topProcesses, [](const auto& row) {
             return Json{{"id", row.id},
                         {"name", row.name},
                         {"executablePath", row.executablePath},
                         {"cpuPercent", row.cpuPercent},
                         {"memoryBytes", row.memoryBytes}};
           })}};
}

Json memoryJson(const MemorySnapshot& memory) {
  return {{"usedBytes", memory.usedBytes},
          {"totalBytes", memory.totalBytes},
          {"pressure", rawValue(memory.pressure)},
          {"appBytes", memory.appBytes},
          {"wiredBytes", memory.wiredBytes},
          {"compressedBytes", memory.compressedBytes},
          {"swapUsedBytes", memory.swapUsedBytes},
          {"swapTotalBytes", memory.swapTotalBytes},
          {"topProcesses", list(memory.topProcesses, [](const auto& row) {
             return Json{{"id", row.id}, {"name", row.name}, {"memoryBytes", row.memoryBytes}};
           })}};
}

Json batteryJson(const BatterySnapshot& battery) {
  return {{"percent", battery.percent},
          {"isCharging", battery.isCharging},
          {"isFullyCharged", battery.isFullyCharged},
          {"timeRemainingMinutes", optional(battery.timeRemainingMinutes)},
          {"cycleCount", battery.cycleCount},
          {"healthPercent", battery.healthPercent},
          {"condition", label(battery.condition)},
          {"voltageMV", battery.voltageMV},
          {"amperageMa", battery.amperageMa},
          {"currentCapacityMah", battery.currentCapacityMah},
          {"designCapacityMah", battery.designCapacityMah},
          {"temperatureCelsius", optional(battery.temperatureCelsius)}};
}

Json diskJson(const DiskSnapshot& disk) {
  return {{"readBytesPerSec", disk.readBytesPerSec}, {"writeBytesPerSec", disk.writeBytesPerSec},
          {"volumeName", disk.volumeName},           {"volumeTotalBytes", disk.volumeTotalBytes},
          {"volumeUsedBytes", disk.volumeUsedBytes}, {"volumeFreeBytes", disk.volumeFreeBytes}};
}

Json networkJson(const NetworkSnapshot& network) {
  return {{"uploadBytesPerSec", network.uploadBytesPerSec},
          {"downloadBytesPerSec", network.downloadBytesPerSec},
          {"ssid", optional(network.ssid)},
          {"interfaceName", network.interfaceName},
          {"needsLocation", network.needsLocation},
          {"ipAddress", optional(network.ipAddress)},
          {"interfaces", list(network.interfaces, [](const auto& row) {
             return Json{{"id", row.id},
                         {"kind", row.kind},
                         {"ipAddress", optional(row.ipAddress)},
                         {"totalSent", row.totalSent},
                         {"totalRecv", row.totalRecv}};
           })}};
}

const char* name(AudioSnapshot::Device::TransportKind transport) {
  using enum AudioSnapshot::Device::TransportKind;
  switch (transport) {
    case builtIn:
      return "builtIn";
    case usb:
      return "usb";
    case bluetooth:
      return "bluetooth";
    case bluetoothLE:
      return "bluetoothLE";
    case airPlay:
      return "airPlay";
    case hdmi:
      return "hdmi";
    case displayPort:
      return "displayPort";
    case thunderbolt:
      return "thunderbolt";
    case virtual_:
      return "virtual";
    case unknown:
      return "unknown";
  }
  return "";
}

Json deviceJson(const AudioSnapshot::Device& device) {
  return {{"id", device.id},
          {"name", device.name},
          {"transport", name(device.transport)},
          {"volume", device.volume},
          {"isMuted", device.isMuted},
          {"sampleRate", device.sampleRate},
          {"channelCount", device.channelCount}};
}

Json audioJson(const AudioSnapshot& audio) {
  const auto one = [](const auto& device) { return device ? deviceJson(*device) : Json(nullptr); };
  return {{"defaultOutput", one(audio.defaultOutput)},
          {"defaultInput", one(audio.defaultInput)},
          {"allOutputDevices", list(audio.allOutputDevices, deviceJson)},
          {"allInputDevices", list(audio.allInputDevices, deviceJson)},
          {"activeProcesses", list(audio.activeProcesses, [](const auto& row) {
             return Json{{"id", row.id},
                         {"name", row.name},
                         {"bundleID", optional(row.bundleID)},
                         {"pid", optional(row.pid)},
                         {"iconName", optional(row.iconName)},
                         {"usesInput", row.usesInput},
                         {"usesOutput", row.usesOutput}};
           })}};
}

}  // namespace

Json snapshotJson(const AppEnvironment& environment) {
  return {{"cpu", cpuJson(*environment.cpu->current)},
          {"memory", memoryJson(*environment.memory->current)},
          {"battery", batteryJson(*environment.battery->current)},
          {"disk", diskJson(*environment.disk->current)},
          {"network", networkJson(*environment.network->current)},
          {"audio", audioJson(*environment.audio->current)}};
}

}  // namespace kestrune::tools
