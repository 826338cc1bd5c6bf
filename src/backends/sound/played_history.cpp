#include "backends/sound/played_history.h"

#include <algorithm>
#include <cstdlib>

namespace kestrune {

void PlayedHistory::Start(qint64 frames, int newChannels) {
    roomFrames = frames;
    channels = newChannels;
    endOfAll = 0;
    ring.resize(static_cast<size_t>(frames * newChannels));
}

qint64 PlayedHistory::FirstKept() const {
    return std::max<qint64>(0, endOfAll - roomFrames);
}

void PlayedHistory::Append(const qint16* samples, qint64 frames) {
    while (frames > 0) {
        const qint64 at = endOfAll % roomFrames;
        const qint64 step = std::min(frames, roomFrames - at);
        std::copy_n(samples, step * channels, ring.begin() + at * channels);
        samples += step * channels;
        frames -= step;
        endOfAll += step;
    }
}

QList<qint16> PlayedHistory::Before(qint64 endFrame, qint64 count) const {
    const qint64 end = std::min(endFrame, endOfAll);
    const qint64 begin = std::max(end - std::max<qint64>(count, 0), FirstKept());
    QList<qint16> result;
    result.reserve(std::max<qint64>(0, end - begin) * channels);
    for (qint64 frame = begin; frame < end; ++frame) {
        const qint16* sample = ring.data() + frame % roomFrames * channels;
        result.append(sample[0]);
        if (channels == 2) {
            result.append(sample[1]);
        }
    }
    return result;
}

std::array<int, 2> PlayedHistory::Peaks(qint64 beginFrame, qint64 endFrame) const {
    std::array<int, 2> peaks{};
    const qint64 end = std::min(endFrame, endOfAll);
    for (qint64 frame = std::max(beginFrame, FirstKept()); frame < end; ++frame) {
        const qint16* sample = ring.data() + frame % roomFrames * channels;
        peaks[0] = std::max(peaks[0], std::abs(static_cast<int>(sample[0])));
        peaks[1] = std::max(peaks[1], std::abs(static_cast<int>(sample[channels - 1])));
    }
    return peaks;
}

} // namespace kestrune
