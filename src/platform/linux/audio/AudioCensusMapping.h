#pragma once

#include <cstdint>
#include <functional>

#include "platform/AudioService.h"
#include "platform/linux/audio/PulseFacts.h"

namespace kestrune::platform {

// The census in the server's order, sinks before sources. A device is a sink (output) or a source (input),
// never both; its id stays while it is there.
//  - What records a sink's sound is no input, and neither a device nor a use of one.
//  - A volume is that of the loudest channel, as desktops show it; an amplified one counts as 1.
//  - A client is running where a stream of its own is not corked. Level meters, as volume controls have them,
//    don't count.
// `pidOf` tells each client's pid.
AudioCensus audioCensus(const PulseFacts& facts,
                        const std::function<std::int32_t(const PulseClient&)>& pidOf);

// `unknown` where the server doesn't say enough.
AudioTransport audioTransport(const PulseDevice& device);

}  // namespace kestrune::platform
