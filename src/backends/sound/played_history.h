// The latest frames that went to the device, found again by their position.
#pragma once

#include <QList>
#include <QtGlobal>
#include <array>
#include <vector>

namespace kestrune {

// Frames are numbered from 0 at Start. Not thread-safe; used by one thread at a time.
class PlayedHistory {
public:
    // Room for `frames` frames of 1 or 2 channels; older ones are forgotten.
    void Start(qint64 frames, int channels);
    void Append(const qint16* samples, qint64 frames);
    // The `count` frames before position `endFrame`, interleaved; fewer where they were never there or are
    // forgotten.
    QList<qint16> Before(qint64 endFrame, qint64 count) const;
    // The greatest magnitude of each channel from `beginFrame` up to `endFrame`, 0 to 32768. Of a mono signal
    // both are the same.
    std::array<int, 2> Peaks(qint64 beginFrame, qint64 endFrame) const;

private:
    qint64 FirstKept() const;

    std::vector<qint16> ring_;
    qint64 roomFrames_ = 0;
    qint64 endOfAll_ = 0;
    int channels_ = 2;
};

} // namespace kestrune
