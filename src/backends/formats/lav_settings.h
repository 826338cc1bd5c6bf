// What holds for the FFmpeg libraries in the whole process.
#pragma once

namespace kestrune {

// To be called before the libraries are given anything, from any thread and any number of times.
void SetUpLav();

} // namespace kestrune
