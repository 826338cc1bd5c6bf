#include "backends/encoders/truespeech_encoder.h"
#include "backends/speech/judge.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <random>

namespace kestrune {
namespace {

// Hands the sound over in pieces of odd sizes.
QByteArray Encoded(const Sound& sound, quint32 seed = 1) {
    QBuffer file;
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    const auto encoder = MakeTrueSpeechEncoder(TrueSpeechFormat());
    EXPECT_EQ(encoder->Begin(file), Outcome::Ok);
    std::mt19937 random(seed);
    size_t done = 0;
    while (done < sound.size()) {
        const size_t piece = std::min<size_t>(random() % 1000, sound.size() - done);
        EXPECT_EQ(encoder->WriteIntegers(sound.data() + done, static_cast<qint64>(piece)), Outcome::Ok);
        done += piece;
    }
    EXPECT_EQ(encoder->Finish(), Outcome::Ok);
    return file.data();
}

template <typename Number>
Number NumberAt(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

QString Written(const QTemporaryDir& folder, const QByteArray& bytes) {
    QFile file(folder.filePath(QStringLiteral("a.wav")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
}

TEST(TrueSpeechEncoder, TakesTelephoneSpeech) {
    const auto encoder = MakeTrueSpeechEncoder(TrueSpeechFormat());
    EXPECT_EQ(encoder->Input().rateHz, 8000);
    EXPECT_EQ(encoder->Input().channels, 1);
    EXPECT_FALSE(encoder->Input().takesFloats);
    EXPECT_EQ(encoder->WriteFloats(nullptr, 0), Outcome::NotSupported);
}

TEST(TrueSpeechEncoder, HeaderSaysWhatFollows) {
    const QByteArray file = Encoded(Sine(300, 5000, 1000));
    ASSERT_EQ(file.size(), 90 + 5 * 32);
    EXPECT_EQ(file.left(4), "RIFF");
    EXPECT_EQ(NumberAt<quint32>(file, 4), file.size() - 8);
    EXPECT_EQ(file.mid(8, 8), "WAVEfmt ");
    EXPECT_EQ(NumberAt<quint32>(file, 16), 50U);
    EXPECT_EQ(NumberAt<quint16>(file, 20), 0x22);
    EXPECT_EQ(NumberAt<quint16>(file, 22), 1);
    EXPECT_EQ(NumberAt<quint32>(file, 24), 8000U);
    EXPECT_EQ(NumberAt<quint32>(file, 28), 1067U);
    EXPECT_EQ(NumberAt<quint16>(file, 32), 32);
    EXPECT_EQ(NumberAt<quint16>(file, 36), 32);
    EXPECT_EQ(NumberAt<quint16>(file, 40), 240);
    EXPECT_EQ(file.mid(70, 4), "fact");
    EXPECT_EQ(NumberAt<quint32>(file, 78), 1000U);
    EXPECT_EQ(file.mid(82, 4), "data");
    EXPECT_EQ(NumberAt<quint32>(file, 86), 160U);
}

TEST(TrueSpeechEncoder, AnyNumberOfSamplesIsAFile) {
    const std::array<std::array<int, 2>, 8> cases = {
        {{0, 0}, {1, 1}, {239, 1}, {240, 1}, {241, 2}, {480, 2}, {481, 3}, {719, 3}}};
    for (const auto& [samples, blocks] : cases) {
        const QByteArray file = Encoded(Sine(300, 5000, samples));
        EXPECT_EQ(file.size(), 90 + blocks * 32) << samples;
        EXPECT_EQ(NumberAt<quint32>(file, 78), static_cast<quint32>(samples));
        EXPECT_EQ(NumberAt<quint32>(file, 86), static_cast<quint32>(blocks * 32));
    }
}

TEST(TrueSpeechEncoder, PiecesDoNotMatter) {
    const Sound talk = Talk(120, 6000, 3);
    EXPECT_EQ(Encoded(talk, 1), Encoded(talk, 2));
}

TEST(TrueSpeechEncoder, JudgeReadsTheFileFromTheFirstSampleOn) {
    const QTemporaryDir folder;
    const Sound voice = Voice(130, 20000);
    const QString path = Written(folder, Encoded(voice));
    const Sound read = JudgeReads(path);
    // The last block is filled up with silence.
    EXPECT_EQ(read.size(), 20160U);
    const double inPlace = SnrDb(voice, read);
    EXPECT_GT(inPlace, 10);
    for (const int shift : {-2, -1, 1, 2}) {
        Sound shifted(read.begin() + 10 + shift, read.end() - 10 + shift);
        EXPECT_LT(SnrDb(Sound(voice.begin() + 10, voice.end()), shifted), inPlace) << shift;
    }
}

TEST(TrueSpeechEncoder, ProbeTellsFormatAndLength) {
    const QTemporaryDir folder;
    const QString path = Written(folder, Encoded(Sine(440, 8000, 20000)));
    const QByteArray told =
        RunTool(QStringLiteral("ffprobe"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                 QStringLiteral("stream=codec_name,sample_rate,channels,duration_ts,bit_rate"),
                 QStringLiteral("-of"), QStringLiteral("default=nw=1"), path});
    EXPECT_TRUE(told.contains("codec_name=truespeech")) << told.constData();
    EXPECT_TRUE(told.contains("sample_rate=8000"));
    EXPECT_TRUE(told.contains("channels=1"));
    EXPECT_TRUE(told.contains("duration_ts=20000"));
    EXPECT_TRUE(told.contains("bit_rate=8536"));
}

// A device with no room left.
class FullDevice : public QBuffer {
public:
    explicit FullDevice(qint64 room) : room_(room) {}

protected:
    qint64 writeData(const char* bytes, qint64 count) override {
        return pos() + count > room_ ? -1 : QBuffer::writeData(bytes, count);
    }

private:
    qint64 room_;
};

TEST(TrueSpeechEncoder, AFullDeviceIsTold) {
    const Sound sound = Sine(300, 5000, 2400);
    FullDevice none(10);
    ASSERT_TRUE(none.open(QIODevice::ReadWrite));
    EXPECT_EQ(MakeTrueSpeechEncoder(TrueSpeechFormat())->Begin(none), Outcome::WriteFailed);
    FullDevice some(100);
    ASSERT_TRUE(some.open(QIODevice::ReadWrite));
    const auto encoder = MakeTrueSpeechEncoder(TrueSpeechFormat());
    ASSERT_EQ(encoder->Begin(some), Outcome::Ok);
    EXPECT_EQ(encoder->WriteIntegers(sound.data(), 2400), Outcome::WriteFailed);
    FullDevice almost(100);
    ASSERT_TRUE(almost.open(QIODevice::ReadWrite));
    const auto second = MakeTrueSpeechEncoder(TrueSpeechFormat());
    ASSERT_EQ(second->Begin(almost), Outcome::Ok);
    ASSERT_EQ(second->WriteIntegers(sound.data(), 300), Outcome::Ok);
    EXPECT_EQ(second->Finish(), Outcome::WriteFailed);
}

} // namespace
} // namespace kestrune
