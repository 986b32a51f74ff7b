#include "ui/components/AudioParts.h"

#include "ui/components/Formatters.h"

namespace kestrune::ui {
namespace {

struct TransportWords {
  const char* label;
  const char* symbol;
};

TransportWords wordsFor(AudioSnapshot::Device::TransportKind transport) {
  using enum AudioSnapshot::Device::TransportKind;
  switch (transport) {
    case builtIn:
      return {"Built-in", "hifispeaker.fill"};
    case usb:
      return {"USB", "cable.connector"};
    case bluetooth:
      return {"Bluetooth", "headphones"};
    case bluetoothLE:
      return {"Bluetooth LE", "headphones"};
    case airPlay:
      return {"AirPlay", "airplayvideo"};
    case hdmi:
      return {"HDMI", "display"};
    case displayPort:
      return {"DisplayPort", "display"};
    case thunderbolt:
      return {"Thunderbolt", "bolt"};
    case virtual_:
      return {"Virtual", "speaker.wave.2"};
    case unknown:
      break;
  }
  return {"Unknown", "speaker.wave.2"};
}

}  // namespace

std::string transportSymbol(AudioSnapshot::Device::TransportKind transport) {
  return wordsFor(transport).symbol;
}

const char* transportLabel(AudioSnapshot::Device::TransportKind transport) {
  return wordsFor(transport).label;
}

std::string volumeText(float volume) {
  return std::to_string(wholePercent(static_cast<double>(volume) * 100)) + "%";
}

}  // namespace kestrune::ui
