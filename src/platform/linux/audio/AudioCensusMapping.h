#pragma once

#include <cstdint>
#include <functional>

#include "platform/AudioService.h"
#include "platform/linux/audio/PulseFacts.h"

namespace kestrune::platform {

// The census in the server's order, sinks before sources. A device is either a sink (output) or a source
// (input); its id stays the same as long as the device exists.
//  - Monitors, which record what a sink plays, are neither devices nor inputs in use.
//  - The volume is that of the loudest channel, as desktops show it; amplification counts as 1.
//  - A client is running if one of its streams is not corked. Level meters don't count.
// `pidOf` returns each client's pid.
AudioCensus audioCensus(const PulseFacts& facts,
                        const std::function<std::int32_t(const PulseClient&)>& pidOf);

// `unknown` if the server doesn't report it.
AudioTransport audioTransport(const PulseDevice& device);

}  // namespace kestrune::platform
