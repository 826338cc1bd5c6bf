// What an operation of a component came to. Every operation that can fail returns one of these.
#pragma once

namespace kestrune {

enum class Outcome {
    Ok,
    NotFound,     // the file or device does not exist or cannot be opened
    NotDecodable, // the content is not of a kind that the component understands
    NotSupported, // the combination of parameters, or the operation, is not available
    NotOpen,      // call order: the operation needs an open file or a prepared device
    WriteFailed,  // the target took less than it was given
    DeviceFailed, // the device refused or vanished
};

} // namespace kestrune
