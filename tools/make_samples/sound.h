// A stretch of sound in memory, and what finishes it.
#pragma once

#include <vector>

namespace kestrune {

// Two channels of equal length; full scale is 1.
struct Sound {
    int rateHz = 44100;
    std::vector<double> left;
    std::vector<double> right;
};

struct Level {
    double peakDb = 0; // of full scale
    double rmsDb = 0;
    double dc = 0;   // mean of all samples
    double edge = 0; // largest of the first and last sample of each channel
};

Sound SilentSound(int rateHz, double seconds);

// Room: a few decaying echoes, crossed between the channels.
void AddRoom(Sound& sound, double amount);

// Takes out what is below hearing, fades both ends to zero, and brings the peak to `peakDb`.
void Finish(Sound& sound, double fadeOutSeconds, double peakDb);

Level Measure(const Sound& sound);

} // namespace kestrune
