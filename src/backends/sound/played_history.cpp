#include "backends/sound/played_history.h"

#include <algorithm>
#include <cstdlib>

namespace kestrune {

void PlayedHistory::Start(qint64 frames, int newChannels) {
    roomFrames_ = frames;
    channels_ = newChannels;
    endOfAll_ = 0;
    ring_.resize(static_cast<size_t>(frames * newChannels));
}

qint64 PlayedHistory::FirstKept() const {
    return std::max<qint64>(0, endOfAll_ - roomFrames_);
}

void PlayedHistory::Append(const qint16* samples, qint64 frames) {
    while (frames > 0) {
        const qint64 at = endOfAll_ % roomFrames_;
        const qint64 step = std::min(frames, roomFrames_ - at);
        std::copy_n(samples, step * channels_, ring_.begin() + at * channels_);
        samples += step * channels_;
        frames -= step;
        endOfAll_ += step;
    }
}

QList<qint16> PlayedHistory::Before(qint64 endFrame, qint64 count) const {
    const qint64 end = std::min(endFrame, endOfAll_);
    const qint64 begin = std::max(end - std::max<qint64>(count, 0), FirstKept());
    QList<qint16> result;
    result.reserve(std::max<qint64>(0, end - begin) * channels_);
    for (qint64 frame = begin; frame < end; ++frame) {
        const qint16* sample = ring_.data() + frame % roomFrames_ * channels_;
        result.append(sample[0]);
        if (channels_ == 2) {
            result.append(sample[1]);
        }
    }
    return result;
}

std::array<int, 2> PlayedHistory::Peaks(qint64 beginFrame, qint64 endFrame) const {
    std::array<int, 2> peaks{};
    const qint64 end = std::min(endFrame, endOfAll_);
    for (qint64 frame = std::max(beginFrame, FirstKept()); frame < end; ++frame) {
        const qint16* sample = ring_.data() + frame % roomFrames_ * channels_;
        peaks[0] = std::max(peaks[0], std::abs(static_cast<int>(sample[0])));
        peaks[1] = std::max(peaks[1], std::abs(static_cast<int>(sample[channels_ - 1])));
    }
    return peaks;
}

} // namespace kestrune
