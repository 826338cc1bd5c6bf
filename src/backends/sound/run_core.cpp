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
    sampleRateHz_ = newSampleRateHz;
    channels_ = newChannels;
    chain.Start(newSampleRateHz, newChannels);
    Clear();
    queue.Reset(true);
}

void RunCore::Clear() {
    queue.Reset(false);
    history_.Start(historyFrames + static_cast<qint64>(sampleRateHz_) * historyAheadMs / 1000, channels_);
    pulledFrames_ = 0;
    heardFrames_ = 0;
    levelsTakenFrames_ = 0;
}

qint64 RunCore::Pull(qint16* out, qint64 maxFrames) {
    const qint64 frames = queue.Read(reinterpret_cast<char*>(out), maxFrames * FrameSize()) / FrameSize();
    chain.Process(out, frames);
    history_.Append(out, frames);
    pulledFrames_ += frames;
    return frames;
}

void RunCore::SetUnheard(qint64 unheardFrames) {
    heardFrames_ = std::clamp(pulledFrames_ - unheardFrames, heardFrames_, pulledFrames_);
}

void RunCore::SetNeverHeard(qint64 neverHeardFrames) {
    heardFrames_ = std::clamp<qint64>(pulledFrames_ - neverHeardFrames, 0, pulledFrames_);
    levelsTakenFrames_ = std::min(levelsTakenFrames_, heardFrames_);
}

Levels RunCore::TakeLevels() {
    const std::array<int, 2> peaks = history_.Peaks(levelsTakenFrames_, heardFrames_);
    levelsTakenFrames_ = heardFrames_;
    return {LevelDb(peaks[0]), LevelDb(peaks[1])};
}

} // namespace kestrune
