#include "backends/encoders/mp3_frames.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrune {

namespace {

constexpr std::array<int, 15> ratesOfMpeg1{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> ratesOfOthers{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr int headerBytes = 4;
constexpr int checksumBytes = 2;

class BitReader {
public:
    BitReader(const QByteArray& bytes, qint64 start) : bytes_(bytes), bit_(start * 8) {}
    int Take(int count) {
        int value = 0;
        for (int done = 0; done < count; ++done, ++bit_) {
            const auto byte = static_cast<uchar>(bytes_.at(static_cast<qsizetype>(bit_ / 8)));
            value = value << 1 | (byte >> (7 - bit_ % 8) & 1);
        }
        return value;
    }

private:
    const QByteArray& bytes_;
    qint64 bit_;
};

int SideBytes(const Mp3Frame& frame) {
    if (frame.granules == 2) {
        return frame.mode == 3 ? 17 : 32;
    }
    return frame.mode == 3 ? 9 : 17;
}

// CRC-16 with the polynomial 8005, over the last two bytes of the header and the side information.
bool ChecksumIsRight(const QByteArray& file, const Mp3Frame& frame) {
    int sum = 0xFFFF;
    const auto add = [&](qint64 at) {
        for (int bit = 7; bit >= 0; --bit) {
            const int in = static_cast<uchar>(file.at(static_cast<qsizetype>(at))) >> bit & 1;
            const int out = sum >> 15 & 1;
            sum = (sum << 1 & 0xFFFF) ^ (in != out ? 0x8005 : 0);
        }
    };
    add(frame.position + 2);
    add(frame.position + 3);
    const qint64 side = frame.position + headerBytes + checksumBytes;
    for (int at = 0; at < SideBytes(frame); ++at) {
        add(side + at);
    }
    BitReader reader(file, frame.position + headerBytes);
    return reader.Take(16) == sum;
}

void ReadSideInformation(const QByteArray& file, Mp3Frame& frame) {
    const int channels = frame.Channels();
    const bool full = frame.granules == 2;
    BitReader reader(file, frame.position + headerBytes + (frame.hasChecksum ? checksumBytes : 0));
    frame.mainDataBegins = reader.Take(full ? 9 : 8);
    if (full) {
        reader.Take((channels == 1 ? 5 : 3) + 4 * channels);
    } else {
        reader.Take(channels == 1 ? 1 : 2);
    }
    for (size_t granule = 0; granule < static_cast<size_t>(frame.granules); ++granule) {
        for (size_t channel = 0; channel < static_cast<size_t>(channels); ++channel) {
            frame.bits[granule][channel] = reader.Take(12);
            reader.Take(9 + 8 + (full ? 4 : 9));
            if (reader.Take(1) == 1) {
                frame.blockTypes[granule][channel] = reader.Take(2);
                reader.Take(1 + 2 * 5 + 3 * 3);
            } else {
                reader.Take(3 * 5 + 4 + 3);
            }
            reader.Take(full ? 3 : 2);
        }
    }
}

bool ReadHeader(const QByteArray& file, Mp3Frame& frame) {
    if (frame.position + headerBytes > file.size()) {
        return false;
    }
    BitReader reader(file, frame.position);
    if (reader.Take(11) != 0x7FF) {
        return false;
    }
    const int version = reader.Take(2); // 3 MPEG-1, 2 MPEG-2, 0 its extension
    const int layer = reader.Take(2);
    frame.hasChecksum = reader.Take(1) == 0;
    const int rateIndex = reader.Take(4);
    const int frequencyIndex = reader.Take(2);
    const int padding = reader.Take(1);
    reader.Take(1);
    frame.mode = reader.Take(2);
    frame.middleAndSide = (reader.Take(2) & 2) != 0 && frame.mode == 1;
    reader.Take(2);
    frame.emphasis = reader.Take(2);
    if (version == 1 || layer != 1 || rateIndex == 0 || rateIndex == 15 || frequencyIndex == 3) {
        return false;
    }
    constexpr std::array<int, 3> frequencies{44100, 48000, 32000};
    const bool full = version == 3;
    frame.granules = full ? 2 : 1;
    frame.rateHz = frequencies[static_cast<size_t>(frequencyIndex)] / (full ? 1 : version == 2 ? 2 : 4);
    frame.kbps = (full ? ratesOfMpeg1 : ratesOfOthers)[static_cast<size_t>(rateIndex)];
    frame.bytes = (full ? 144 : 72) * 1000 * frame.kbps / frame.rateHz + padding;
    const int contentBytes = headerBytes + (frame.hasChecksum ? checksumBytes : 0) + SideBytes(frame);
    return frame.bytes >= contentBytes && frame.position + frame.bytes <= file.size();
}

} // namespace

std::vector<Mp3Frame> Mp3Frames(const QByteArray& file) {
    std::vector<Mp3Frame> frames;
    qint64 position = 0;
    while (position < file.size()) {
        Mp3Frame frame;
        frame.position = position;
        if (!ReadHeader(file, frame)) {
            ADD_FAILURE() << "no frame at byte " << position << " of " << file.size();
            break;
        }
        ReadSideInformation(file, frame);
        frame.checksumIsRight = frame.hasChecksum && ChecksumIsRight(file, frame);
        const QByteArray content = file.mid(static_cast<qsizetype>(position), frame.bytes);
        frame.isHeader = frames.empty() && (content.contains("Xing") || content.contains("Info"));
        position += frame.bytes;
        frames.push_back(frame);
    }
    EXPECT_EQ(position, file.size());
    return frames;
}

std::vector<Mp3Frame> SoundFrames(const QByteArray& file) {
    std::vector<Mp3Frame> frames = Mp3Frames(file);
    if (!frames.empty() && frames.front().isHeader) {
        frames.erase(frames.begin());
    }
    return frames;
}

} // namespace kestrune
