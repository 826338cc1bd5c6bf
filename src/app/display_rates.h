// How often a display of playback or recording is painted. Milliseconds.
#pragma once

namespace kestrune {

// From tick to tick of the player's timer, at which a display is fed: meters 33 times a second, spectra 12.5.
inline constexpr int meterIntervalMs = 30;
inline constexpr int spectrumIntervalMs = 80;
// A spectrum is shown in two steps, so that it moves twice as smoothly: 25 times a second.
inline constexpr int secondStepMs = spectrumIntervalMs / 2;
// What falls on when nothing is fed any more: 30 times a second.
inline constexpr int fallStepMs = 33;

} // namespace kestrune
