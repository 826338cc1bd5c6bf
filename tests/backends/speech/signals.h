// Sounds at 8,000 Hz that the tests make, the same on every run.
#pragma once

#include <QtGlobal>

#include <vector>

namespace kestrune {

using Sound = std::vector<qint16>;

Sound Sine(double hz, double amplitude, int samples);
Sound Noise(double amplitude, int samples, quint32 seed);
Sound Square(double hz, int amplitude, int samples);
// A buzz of a voice that glides up and down, through the resonances of one vowel after another.
Sound Voice(double lowestHz, int samples);
// The same with hisses and pauses between the vowels.
Sound Talk(double lowestHz, int samples, quint32 seed);
// Plucked notes of a chord, with their overtones.
Sound Music(int samples, quint32 seed);

// The mean over pieces of 20 ms of how far the error lies below the sound, in dB; each piece counts from -10
// to 35 dB, and pieces far below a hundredth of full scale don't count.
double SegmentalSnrDb(const Sound& original, const Sound& decoded);
double SnrDb(const Sound& original, const Sound& decoded);

} // namespace kestrune
