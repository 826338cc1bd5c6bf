// The frames of an MPEG layer 3 file as their headers and side information tell of them (ISO/IEC 11172-3,
// 2.4.1.3 and 2.4.1.7).
#pragma once

#include <QByteArray>

#include <array>
#include <vector>

namespace kestrune {

struct Mp3Frame {
    qint64 position = 0;
    int bytes = 0;
    int kbps = 0;
    int rateHz = 0;
    int mode = 0;     // 0 stereo, 1 joint, 2 dual channel, 3 mono
    int emphasis = 0; // 0 none, 1 50/15 microseconds, 3 CCITT J.17
    bool middleAndSide = false;
    bool hasChecksum = false;
    bool checksumIsRight = false;
    bool isHeader = false;  // the first frame, when it tells of the others and has no sound
    int mainDataBegins = 0; // bytes before the frame
    int granules = 2;
    // By granule and channel.
    std::array<std::array<int, 2>, 2> blockTypes{}; // 0 long, 1 start, 2 short, 3 stop
    std::array<std::array<int, 2>, 2> bits{};

    int Channels() const { return mode == 3 ? 1 : 2; }
};

// All frames; a test failure where something else stands between them.
std::vector<Mp3Frame> Mp3Frames(const QByteArray& file);
// Those with sound.
std::vector<Mp3Frame> SoundFrames(const QByteArray& file);

} // namespace kestrune
