// MP3 files that were cut, put together or spoilt: the length that is told, beside the one that is heard.
#include "backends/audio_file/codec_file.h"
#include "backends/tags/audio_probe.h"
#include "backends/tags/made_files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;

QByteArray Run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(120000)) << program.toStdString();
    return process.readAllStandardOutput();
}

// Loud, quiet and silent parts, so that a varying bit rate varies.
QByteArray Music(int seconds, int channels) {
    std::minstd_rand random(7);
    QByteArray bytes;
    bytes.reserve(qsizetype{seconds} * rateHz * channels * 2);
    for (int frame = 0; frame < seconds * rateHz; ++frame) {
        const int part = frame / rateHz % 4;
        const int noise = part == 0 ? 12001 : part == 1 ? 2001 : part == 2 ? 1 : 401;
        for (int channel = 0; channel < channels; ++channel) {
            const double tone = part == 2 ? 0 : 6000 * std::sin(frame * 0.04 * (channel + 1 + part));
            const auto sample = static_cast<qint16>(tone + static_cast<int>(random() % noise) - noise / 2);
            bytes.append(reinterpret_cast<const char*>(&sample), 2);
        }
    }
    return bytes;
}

QByteArray Coded(int seconds, const QStringList& options, int channels = 2) {
    QStringList arguments{QStringLiteral("--quiet"),    QStringLiteral("-r"),
                          QStringLiteral("-s"),         QStringLiteral("44.1"),
                          QStringLiteral("--bitwidth"), QStringLiteral("16"),
                          QStringLiteral("--signed"),   QStringLiteral("--little-endian")};
    arguments << QStringLiteral("-m") << (channels == 1 ? QStringLiteral("m") : QStringLiteral("j"));
    // Into a file: only there the first frame can be told the length in the end.
    const MadeFiles made;
    const QString path = made.Path(QStringLiteral("coded.mp3"));
    arguments << options << QStringLiteral("-") << path;
    Run(QStringLiteral("lame"), arguments, Music(seconds, channels));
    const QByteArray coded = ContentOf(path);
    EXPECT_GT(coded.size(), 1000);
    return coded;
}

QByteArray Noise(qsizetype bytes, quint32 seed = 1) {
    std::minstd_rand random(seed);
    QByteArray noise(bytes, Qt::Uninitialized);
    for (char& byte : noise) {
        byte = static_cast<char>(random() >> 8);
    }
    return noise;
}

// An ID3v2 tag that claims to be so long, and what really stands in it.
QByteArray Tag(int claimedBytes, const QByteArray& content) {
    QByteArray tag("ID3\x03\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7) {
        tag += static_cast<char>(claimedBytes >> shift & 0x7F);
    }
    return tag + content;
}

struct Damaged {
    const char* name;
    QByteArray bytes;
};

class Sounds {
public:
    const QByteArray constant = Coded(20, {QStringLiteral("-b"), QStringLiteral("128")});
    const QByteArray bare = Coded(20, {QStringLiteral("-b"), QStringLiteral("128"), QStringLiteral("-t")});
    const QByteArray varying = Coded(20, {QStringLiteral("-V"), QStringLiteral("2")});
    const QByteArray bareVarying =
        Coded(20, {QStringLiteral("-V"), QStringLiteral("2"), QStringLiteral("-t")});
    const QByteArray mono = Coded(10, {QStringLiteral("-b"), QStringLiteral("64")}, 1);
    const QByteArray second = Coded(1, {QStringLiteral("-b"), QStringLiteral("128")});
};

QByteArray With(QByteArray bytes, qsizetype at, const QByteArray& other) {
    return bytes.replace(at, other.size(), other);
}

QByteArray WithEachTenthHeaderSpoilt(QByteArray bytes) {
    // Frames of a constant rate of 128 kbit/s have 417 or 418 bytes.
    int frame = 0;
    for (qsizetype at = 0; at + 4 < bytes.size(); ++frame) {
        const bool padded = (static_cast<uchar>(bytes[at + 2]) & 2) != 0;
        if (frame % 10 == 9) {
            bytes[at] = 0;
        }
        at += padded ? 418 : 417;
    }
    return bytes;
}

std::vector<Damaged> DamagedFiles() {
    const Sounds s;
    const qsizetype half = s.constant.size() / 2;
    QByteArray falseFrames;
    for (int frame = 0; frame < 5; ++frame) {
        // Headers of 32 kbit/s one after the other, too few for a stream.
        falseFrames += QByteArray::fromHex("FFFB1000") + QByteArray(100, 'x');
    }
    return {
        {"sound, constant", s.constant},
        {"sound, constant, no header", s.bare},
        {"sound, varying", s.varying},
        {"varying, no header", s.bareVarying},
        {"50 KB of noise in front", Noise(50000) + s.constant},
        {"300 KB of noise in front", Noise(300000) + s.constant},
        {"300 KB of noise before a second", Noise(300000) + s.second},
        {"2 MB of noise before a second", Noise(2000000) + s.second},
        {"noise before varying, no header", Noise(60000) + s.bareVarying},
        {"noise of ones in front", QByteArray(20000, '\xFF') + s.constant},
        {"100 KB of zeros in front", QByteArray(100000, '\0') + s.constant},
        {"false frames in front", falseFrames + s.constant},
        {"tag that claims too much", Tag(200000, QByteArray(1000, '\0')) + s.constant},
        {"tag that claims too little", Tag(100, Noise(30000)) + s.constant},
        {"tag in a tag", Tag(3000, Tag(100, QByteArray(2890, 'a'))) + s.varying},
        {"cut at the half, constant", s.constant.left(half)},
        {"cut at the half, varying", s.varying.left(s.varying.size() / 2)},
        {"cut at the half, no header", s.bareVarying.left(s.bareVarying.size() / 2)},
        {"first half lost, constant", s.constant.mid(half)},
        {"first half lost, varying", s.varying.mid(s.varying.size() / 2)},
        {"zeros in the middle", With(s.constant, half, QByteArray(60000, '\0'))},
        {"noise in the middle", With(s.constant, half, Noise(60000))},
        {"noise in the middle, varying", With(s.bareVarying, s.bareVarying.size() / 3, Noise(60000))},
        {"two files put together", s.constant + s.varying},
        {"the same, the second in mono", s.constant + s.mono},
        {"three seconds put together", s.second + s.second + s.second},
        {"300 KB of noise behind", s.constant + Noise(300000)},
        {"300 KB of noise behind varying", s.bareVarying + Noise(300000)},
        {"tags behind, then noise", s.varying + "TAG" + QByteArray(125, ' ') + Noise(100000)},
        {"first header spoilt", With(s.constant, 0, QByteArray(4, '\0'))},
        {"each tenth header spoilt", WithEachTenthHeaderSpoilt(s.bare)},
    };
}

double HeardSeconds(const QString& path) {
    const QByteArray samples =
        Run(QStringLiteral("ffmpeg"),
            {QStringLiteral("-v"), QStringLiteral("quiet"), QStringLiteral("-i"), path, QStringLiteral("-ac"),
             QStringLiteral("1"), QStringLiteral("-f"), QStringLiteral("s16le"), QStringLiteral("-")});
    return static_cast<double>(samples.size()) / 2 / rateHz;
}

bool AreNear(double told, double heard) {
    return std::abs(told - heard) <= 0.02 * heard + 0.03;
}

} // namespace

TEST(DamagedMpeg, TheLengthToldIsTheOneHeard) {
    const MadeFiles made;
    std::printf("%-34s %8s %8s %8s %8s\n", "", "probe", "reader", "decoded", "ffmpeg");
    for (const Damaged& damaged : DamagedFiles()) {
        const QString path = made.Write(QStringLiteral("garbage.mp3"), damaged.bytes);
        const ProbeResult probed = ProbeAudio(path);
        const double told = static_cast<double>(probed.facts.durationMs) / 1000;
        CodecFile reader;
        const bool isRead = reader.OpenRead(path) == Outcome::Ok;
        const double length = static_cast<double>(reader.GetLengthMs()) / 1000;
        qint64 bytes = 0;
        for (QByteArray block = reader.ReadBlock(1 << 20); !block.isEmpty();
             block = reader.ReadBlock(1 << 20)) {
            bytes += block.size();
        }
        const double decoded =
            isRead ? static_cast<double>(bytes) / (2.0 * reader.GetChannels() * reader.GetWaveFormat()) : 0;
        const double heard = HeardSeconds(path);
        std::printf("%-34s %8.2f %8.2f %8.2f %8.2f\n", damaged.name, told, length, decoded, heard);
        EXPECT_TRUE(AreNear(length, decoded)) << damaged.name;
        // In noise each decoder finds some frames of its own.
        EXPECT_TRUE(probed.outcome != Outcome::Ok || AreNear(told, decoded) || AreNear(told, heard))
            << damaged.name;
    }
}

} // namespace kestrune
