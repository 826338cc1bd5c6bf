// The outputs of this machine: the user's default, then each sound card.
#pragma once

#include "backends/sound/output_device.h"

#include <memory>

namespace kestrune {

enum class DefaultOutput {
    ServerFirst, // the sound server by its own protocol, else what libasound calls "default"
    AlsaOnly,    // always by libasound
};

std::unique_ptr<OutputSource> MakeMachineOutputs(DefaultOutput way = DefaultOutput::ServerFirst);

} // namespace kestrune
