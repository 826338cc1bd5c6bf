// What holds for each of the encoders.
#include "backends/encoders/mp2_encoder.h"
#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/vorbis_encoder.h"
#include "backends/encoders/wma_encoder.h"

#include "backends/encoders/lossy_files.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <cstring>
#include <functional>
#include <thread>

namespace kestrune {

namespace {

// Takes so many bytes and no more, as a full disk does.
class FullDevice : public QBuffer {
public:
    explicit FullDevice(qint64 room) : room_(room) { open(QIODevice::ReadWrite); }

protected:
    qint64 writeData(const char* bytes, qint64 count) override {
        return pos() + count <= room_ ? QBuffer::writeData(bytes, count) : -1;
    }

private:
    qint64 room_;
};

struct Kind {
    const char* name;
    std::function<std::unique_ptr<SampleEncoder>()> make;
};

Mp3Options Varying() {
    Mp3Options options;
    options.vbrMethod = 0;
    return options;
}

const std::vector<Kind> kinds{
    {"Mp2", [] { return MakeMp2Encoder(*Mp2Format(44100, 192, 3)); }},
    {"Mp3", [] { return MakeMp3Encoder(*Mp3Format(Mp3Options())); }},
    {"Mp3Varying", [] { return MakeMp3Encoder(*Mp3Format(Varying())); }},
    {"Vorbis",
     [] {
         return MakeVorbisEncoder(*VorbisFormat(44100, 2, {128, 0, 0, -1}));
     }},
    {"VorbisHeld",
     [] {
         return MakeVorbisEncoder(*VorbisFormat(44100, 2, {128, 96, 160, -1}));
     }},
    {"Wma", [] { return MakeWmaEncoder(*WmaFormat(39)); }},
};

class AllEncodersTest : public testing::TestWithParam<Kind> {};

QByteArray CodedInBlocksOf(SampleEncoder& encoder, const Sound& sound, qint64 frames) {
    QBuffer device;
    device.open(QIODevice::ReadWrite);
    EXPECT_EQ(encoder.Begin(device), Outcome::Ok);
    for (qint64 done = 0; done < sound.Frames(); done += frames) {
        const qint64 count = std::min(frames, sound.Frames() - done);
        EXPECT_EQ(Write(encoder, sound, done, count), Outcome::Ok);
        EXPECT_EQ(Write(encoder, sound, done, 0), Outcome::Ok);
    }
    EXPECT_EQ(encoder.Finish(), Outcome::Ok);
    return device.data();
}

} // namespace

TEST_P(AllEncodersTest, BlocksOfAnySizeGiveTheSameFile) {
    const Sound sound = Music(0.9, 44100, 2);
    const QByteArray whole = CodedInBlocksOf(*GetParam().make(), sound, sound.Frames());
    for (const qint64 frames : {qint64(1), qint64(333), qint64(1152), qint64(8191)}) {
        EXPECT_TRUE(CodedInBlocksOf(*GetParam().make(), sound, frames) == whole) << frames;
    }
}

TEST_P(AllEncodersTest, AFullDiskIsTold) {
    const Sound sound = Music(1.0, 44100, 2);
    const auto bytes = static_cast<qint64>(CodedInBlocksOf(*GetParam().make(), sound, 44100).size());
    for (const qint64 room : {qint64(0), qint64(100), bytes / 2, bytes - 1}) {
        FullDevice device(room);
        const std::unique_ptr<SampleEncoder> encoder = GetParam().make();
        Outcome outcome = encoder->Begin(device);
        if (outcome == Outcome::Ok) {
            outcome = Write(*encoder, sound, 0, sound.Frames());
        }
        if (outcome == Outcome::Ok) {
            outcome = encoder->Finish();
        }
        EXPECT_EQ(outcome, Outcome::WriteFailed) << room << " of " << bytes;
    }
}

TEST_P(AllEncodersTest, MayBeDroppedAtAnyTime) {
    const Sound sound = Music(0.2, 44100, 2);
    GetParam().make();
    QBuffer device;
    device.open(QIODevice::ReadWrite);
    const std::unique_ptr<SampleEncoder> begun = GetParam().make();
    EXPECT_EQ(begun->Begin(device), Outcome::Ok);
    QBuffer other;
    other.open(QIODevice::ReadWrite);
    const std::unique_ptr<SampleEncoder> written = GetParam().make();
    EXPECT_EQ(written->Begin(other), Outcome::Ok);
    EXPECT_EQ(Write(*written, sound, 0, sound.Frames()), Outcome::Ok);
}

TEST_P(AllEncodersTest, TwoAtOnceDoNotDisturbEachOther) {
    const Sound sound = Music(0.6, 44100, 2);
    const QByteArray alone = CodedInBlocksOf(*GetParam().make(), sound, 5000);
    QByteArray first;
    QByteArray second;
    std::thread one([&] { first = CodedInBlocksOf(*GetParam().make(), sound, 5000); });
    std::thread two([&] { second = CodedInBlocksOf(*GetParam().make(), sound, 5000); });
    one.join();
    two.join();
    EXPECT_TRUE(first == alone);
    EXPECT_TRUE(second == alone);
}

INSTANTIATE_TEST_SUITE_P(Each, AllEncodersTest, testing::ValuesIn(kinds),
                         [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

} // namespace kestrune
