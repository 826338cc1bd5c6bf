#include "support/test_files.h"

#include "components/pcm.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

namespace kestrune {

namespace {

constexpr double twoPi = 6.283185307179586;

template <typename Number>
void AppendLittle(QByteArray& bytes, Number value) {
    const Number little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

// Bits from the highest of each byte on.
class BitWriter {
public:
    void Put(quint32 value, int bits) {
        for (int bit = bits - 1; bit >= 0; --bit) {
            if (used_ % 8 == 0) {
                bytes_.append('\0');
            }
            if ((value >> bit & 1U) != 0) {
                bytes_.back() = static_cast<char>(bytes_.back() | (0x80 >> used_ % 8));
            }
            ++used_;
        }
    }
    QByteArray Padded(qsizetype bytes) const { return bytes_.leftJustified(bytes, '\0', true); }

private:
    QByteArray bytes_;
    int used_ = 0;
};

} // namespace

std::vector<qint16> NoiseAndTones(int frames, int channels, int rateHz, quint32 seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> noise(-3000.0, 3000.0);
    std::vector<qint16> samples;
    samples.reserve(static_cast<size_t>(frames) * static_cast<size_t>(channels));
    for (int frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < channels; ++channel) {
            const double toneHz = 310.0 + 130.0 * channel;
            const double tone = 7000.0 * std::sin(twoPi * toneHz * frame / rateHz);
            samples.push_back(static_cast<qint16>(std::lround(tone + noise(random))));
        }
    }
    return samples;
}

QByteArray BytesOf(const std::vector<qint16>& samples) {
    return {reinterpret_cast<const char*>(samples.data()),
            static_cast<qsizetype>(samples.size() * sizeof(qint16))};
}

QByteArray WaveHead(const WaveShape& shape, quint32 dataBytes) {
    const auto blockBytes = static_cast<quint16>(shape.channels * shape.bits / 8);
    QByteArray head("RIFF");
    AppendLittle<quint32>(head, dataBytes + 36);
    head += "WAVEfmt ";
    AppendLittle<quint32>(head, 16);
    AppendLittle(head, shape.tag);
    AppendLittle(head, shape.channels);
    AppendLittle(head, shape.rateHz);
    AppendLittle<quint32>(head, shape.rateHz * blockBytes);
    AppendLittle(head, blockBytes);
    AppendLittle(head, shape.bits);
    head += "data";
    AppendLittle(head, dataBytes);
    return head;
}

QByteArray WaveFile(const WaveShape& shape, const QByteArray& data) {
    return WaveHead(shape, static_cast<quint32>(data.size())) + data;
}

// ISO/IEC 11172-3: header, 4 bits of allocation, 6 bits of scale, then 12 samples for each band and channel.
QByteArray LayerOneFile(int frames, quint32 seed) {
    constexpr int bands = 32;
    constexpr int loudBands = 16;
    constexpr int sampleBits = 4;
    constexpr qsizetype frameBytes = 416; // 384 kbit/s at 44100 Hz, without padding
    std::mt19937 random(seed);
    QByteArray file;
    for (int frame = 0; frame < frames; ++frame) {
        BitWriter bits;
        bits.Put(0xFFFFC000, 32); // layer I without checksum, 384 kbit/s, 44100 Hz, stereo
        for (int band = 0; band < bands; ++band) {
            const quint32 allocation = band < loudBands ? sampleBits - 1 : 0;
            bits.Put(allocation, 4);
            bits.Put(allocation, 4);
        }
        for (int scale = 0; scale < loudBands * 2; ++scale) {
            bits.Put(12 + random() % 20, 6);
        }
        for (int sample = 0; sample < 12 * loudBands * 2; ++sample) {
            bits.Put(random() % ((1U << sampleBits) - 1), sampleBits);
        }
        file += bits.Padded(frameBytes);
    }
    return file;
}

QByteArray DictationFile(int blocks, quint32 seed) {
    constexpr qsizetype blockBytes = 512;
    constexpr qsizetype dateAt = 0x26;
    QByteArray file(2 * blockBytes, '\0');
    file.replace(0, 4,
                 "\x02"
                 "dss");
    file.replace(dateAt, 12, "261121101500");
    file.replace(dateAt + 12, 12, "261121101600");
    std::mt19937 random(seed);
    for (int block = 0; block < blocks; ++block) {
        QByteArray body(blockBytes, '\0');
        std::generate(body.begin() + 6, body.end(), [&] { return static_cast<char>(random()); });
        file += body;
    }
    return file;
}

QByteArray TrueSpeechFile(int blocks, quint32 seed) {
    constexpr qsizetype blockBytes = 32;
    std::mt19937 random(seed);
    QByteArray data(blocks * blockBytes, '\0');
    std::generate(data.begin(), data.end(), [&] { return static_cast<char>(random()); });
    QByteArray format;
    AppendLittle<quint16>(format, 0x22);
    AppendLittle<quint16>(format, 1);
    AppendLittle<quint32>(format, 8000);
    AppendLittle<quint32>(format, 1067); // bytes a second: 32 for 240 samples
    AppendLittle<quint16>(format, blockBytes);
    AppendLittle<quint16>(format, 1);
    AppendLittle<quint16>(format, 32);
    AppendLittle<quint32>(format, 0x00F00001); // version 1, 240 samples a block
    format += QByteArray(28, '\0');
    QByteArray file("RIFF");
    AppendLittle<quint32>(file, static_cast<quint32>(data.size() + format.size() + 20));
    file += "WAVEfmt ";
    AppendLittle<quint32>(file, static_cast<quint32>(format.size()));
    file += format + "data";
    AppendLittle<quint32>(file, static_cast<quint32>(data.size()));
    return file + data;
}

QString TestFolder::Write(const QString& name, const QByteArray& content) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
    EXPECT_EQ(file.write(content), content.size());
    return Path(name);
}

QByteArray ReadWholeFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

bool RunTool(const QString& program, const QStringList& arguments, QByteArray* output) {
    constexpr int longestMs = 60000;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    const bool ended = process.waitForFinished(longestMs);
    const QByteArray given = process.readAllStandardOutput();
    if (output != nullptr) {
        *output = given;
    }
    const bool good = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    EXPECT_TRUE(good) << qPrintable(program) << " " << qPrintable(arguments.join(QLatin1Char(' '))) << "\n"
                      << process.readAllStandardError().toStdString();
    return good;
}

QByteArray ReadToEnd(KSTAudioFile2& file) {
    std::mt19937 random(17);
    QByteArray all;
    while (true) {
        const QByteArray block = file.ReadBlock(4 + static_cast<qint64>(random() % 30000));
        if (block.isEmpty()) {
            return all;
        }
        all += block;
    }
}

Comparison Compare(const QByteArray& ours, const QByteArray& judge) {
    Comparison comparison;
    comparison.ourSamples = ours.size() / bytesPerSample;
    comparison.judgeSamples = judge.size() / bytesPerSample;
    const qint64 both = std::min(comparison.ourSamples, comparison.judgeSamples);
    for (qint64 at = 0; at < both; ++at) {
        const int difference = qFromLittleEndian<qint16>(ours.constData() + at * bytesPerSample) -
                               qFromLittleEndian<qint16>(judge.constData() + at * bytesPerSample);
        comparison.largest = std::max(comparison.largest, std::abs(difference));
    }
    return comparison;
}

void ExpectExactSeeks(KSTAudioFile2& file, const QByteArray& whole, int places) {
    const qint64 frame = frameBytes(file.GetChannels());
    const qint64 frames = whole.size() / frame;
    std::mt19937_64 random(29);
    int wrong = 0;
    for (int place = 0; place < places; ++place) {
        const qint64 position = static_cast<qint64>(random() % static_cast<quint64>(frames + 1)) * frame;
        const qint64 blockBytes = static_cast<qint64>(random() % 6000) * frame;
        const bool there = file.SeekTo(position, 3) == position;
        wrong += there && file.ReadBlock(blockBytes) == whole.mid(position, blockBytes) ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0) << "of " << places << " seeks";
    EXPECT_EQ(file.SeekTo(0), 0);
    EXPECT_TRUE(ReadToEnd(file) == whole) << "straight decode after a seek to the start";
}

} // namespace kestrune
