#include "backends/sound/run_core.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

// The longest block that the display asks for, and room for what the device and the server hold ahead of it.
constexpr qint64 historyFrames = 16384;
constexpr int historyAheadMs = 1000;

int LevelDb(int peak) {
    return peak == 0 ? 0
                     : std::max(0, static_cast<int>(std::lround(96.0 + 20.0 * std::log10(peak / 32768.0))));
}

} // namespace

void RunCore::Start(int newSampleRateHz, int newChannels) {
    sampleRateHz = newSampleRateHz;
    channels = newChannels;
    chain.Start(newSampleRateHz, newChannels);
    Clear();
    queue.Reset(true);
}

void RunCore::Clear() {
    queue.Reset(false);
    history.Start(historyFrames + static_cast<qint64>(sampleRateHz) * historyAheadMs / 1000, channels);
    pulledFrames = 0;
    heardFrames = 0;
    levelsTakenFrames = 0;
}

qint64 RunCore::Pull(qint16* out, qint64 maxFrames) {
    const qint64 frames = queue.Read(reinterpret_cast<char*>(out), maxFrames * FrameSize()) / FrameSize();
    chain.Process(out, frames);
    history.Append(out, frames);
    pulledFrames += frames;
    return frames;
}

void RunCore::SetUnheard(qint64 unheardFrames) {
    heardFrames = std::clamp(pulledFrames - unheardFrames, heardFrames, pulledFrames);
}

void RunCore::SetNeverHeard(qint64 neverHeardFrames) {
    heardFrames = std::clamp<qint64>(pulledFrames - neverHeardFrames, 0, pulledFrames);
    levelsTakenFrames = std::min(levelsTakenFrames, heardFrames);
}

Levels RunCore::TakeLevels() {
    const std::array<int, 2> peaks = history.Peaks(levelsTakenFrames, heardFrames);
    levelsTakenFrames = heardFrames;
    return {LevelDb(peaks[0]), LevelDb(peaks[1])};
}

} // namespace kestrune
