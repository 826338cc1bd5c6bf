// Files above 4 GiB, which are holes but for their header and a few marks.
#include "backends/audio_file/codec_file.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QtEndian>

namespace kestrune {

namespace {

constexpr qint64 gibibyte = Q_INT64_C(1) << 30;
constexpr qint64 dataBytes = 5 * gibibyte;
const WaveShape shape{1, 2, 44100, 16};

template <typename Number>
QByteArray Little(Number value) {
    const Number little = qToLittleEndian(value);
    return {reinterpret_cast<const char*>(&little), sizeof little};
}

QByteArray Rf64Head() {
    QByteArray head = WaveHead(shape, 0xFFFFFFFF);
    head.replace(0, 4, "RF64");
    head.insert(12, QByteArray("ds64") + Little<quint32>(28) + Little<quint64>(dataBytes + 72) +
                        Little<quint64>(dataBytes) + Little<quint64>(dataBytes / 4) + Little<quint32>(0));
    return head;
}

QByteArray W64Head() {
    const QByteArray tail = QByteArray::fromHex("f3acd3118cd100c04f8edb8a");
    const QByteArray plain = WaveHead(shape, 0);
    return QByteArray("riff") + QByteArray::fromHex("2e91cf11a5d628db04c10000") +
           Little<quint64>(dataBytes + 104) + "wave" + tail + "fmt " + tail + Little<quint64>(40) +
           plain.mid(20, 16) + "data" + tail + Little<quint64>(dataBytes + 24);
}

// Big-endian header: magic, offset, size (all ones: unknown), 16-bit, rate, channels.
QByteArray AuHead() {
    return ".snd" + QByteArray::fromHex("00000018ffffffff000000030000ac4400000002");
}

struct GiantCase {
    const char* name;
    const char* fileName;
    QByteArray head;
};

class GiantFile : public testing::TestWithParam<GiantCase> {};

} // namespace

TEST_P(GiantFile, IsReadBeyondFourGibibytes) {
    const GiantCase& giant = GetParam();
    const TestFolder folder;
    const QString path = folder.Write(QLatin1String(giant.fileName), giant.head);
    QFile raw(path);
    ASSERT_TRUE(raw.open(QIODevice::ReadWrite));
    ASSERT_TRUE(raw.resize(giant.head.size() + dataBytes));
    // Bytes that read the same in both byte orders.
    const QByteArray mark = "AABBCCDDEEFFGGHH";
    for (const qint64 position : {gibibyte, 4 * gibibyte + 4096, dataBytes - mark.size()}) {
        ASSERT_TRUE(raw.seek(giant.head.size() + position));
        ASSERT_EQ(raw.write(mark), mark.size());
    }
    raw.close();

    CodecFile file;
    ASSERT_EQ(file.OpenRead(path), Outcome::Ok);
    EXPECT_EQ(file.GetLengthBytes(), dataBytes);
    EXPECT_EQ(file.GetLengthMs(), dataBytes / 4 * 1000 / 44100);
    for (const qint64 position : {4 * gibibyte + 4096, gibibyte, dataBytes - mark.size()}) {
        EXPECT_EQ(file.SeekTo(position - 8), position - 8);
        EXPECT_EQ(file.ReadBlock(8 + mark.size()), QByteArray(8, '\0') + mark) << position;
    }
    EXPECT_TRUE(file.ReadBlock(4096).isEmpty());
    EXPECT_EQ(file.SeekTo(dataBytes + 4096), dataBytes);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, GiantFile,
    testing::Values(GiantCase{"WaveWithSizeCutTo32Bits", "a.wav", WaveHead(shape, dataBytes & 0xFFFFFFFF)},
                    GiantCase{"WaveWithOpenSize", "a.wav", WaveHead(shape, 0xFFFFFFFF)},
                    GiantCase{"Rf64", "a.wav", Rf64Head()}, GiantCase{"W64", "a.w64", W64Head()},
                    GiantCase{"Au", "a.au", AuHead()}, GiantCase{"Headerless", "a.raw", QByteArray()}),
    [](const auto& tested) { return std::string(tested.param.name); });

} // namespace kestrune
