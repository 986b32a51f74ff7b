#pragma once

#include <pulse/introspect.h>

#include "platform/linux/audio/PulseFacts.h"

namespace kestrune::platform {

// Copies of the structures that libpulse passes to callbacks.
PulseDevice pulseCopy(const pa_sink_info& info);
PulseDevice pulseCopy(const pa_source_info& info);
PulseClient pulseCopy(const pa_client_info& info);
PulseStream pulseCopy(const pa_sink_input_info& info);
PulseStream pulseCopy(const pa_source_output_info& info);
void copyPulseDefaults(const pa_server_info& info, PulseFacts& facts);

}  // namespace kestrune::platform
