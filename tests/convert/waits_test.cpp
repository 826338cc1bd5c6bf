// How long events of the window wait when a run can't go on as it was meant to. What is looked for takes
// seconds; the bounds are far above what is measured on a quiet machine, since tests run on busy ones.
#include "convert/converted_folder.h"
#include "support/small_disk.h"

#include <cstdio>
#include <optional>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;
constexpr double longestMs = 1000;
constexpr double longestBehindStopMs = 400;

class Waits : public ConvertedFolder {
protected:
    static constexpr int seconds = 120;
    static constexpr int blocks = 2 * seconds; // of half a second each
    const QByteArray samples_ = ToneInNoise(rateHz * seconds, 2, 5);

    Waits() { AddWave(QStringLiteral("a.wav"), samples_, rateHz); }

    // Does something at the end of the given block, counted from 1 over the whole run.
    void AtBlock(int block, std::function<void()> action) {
        events_.onRun = [this, block, action = std::move(action)] {
            if (++block_ == block) {
                action();
            }
        };
    }
    // Makes Ogg Vorbis slow: each block is coded several times.
    void HoldRates() { EXPECT_EQ(output_.SetFormatOggVorbis(rateHz, 2, 128, 96, 160, -1), Outcome::Ok); }
    // What was waited at most, and where.
    void Tell(const char* what) const {
        std::printf("longest wait, %s: %.1f ms, before event %d; the last one %.1f ms\n", what,
                    events_.LongestMs(), events_.LongestAt(), events_.SinceLastMs());
    }
    double SecondsOf(const QString& name) const {
        CodecFile reader;
        EXPECT_EQ(reader.OpenRead(Path(name)), Outcome::Ok) << name.toStdString();
        qint64 bytes = 0;
        for (QByteArray block = reader.ReadBlock(1 << 20); !block.isEmpty();
             block = reader.ReadBlock(1 << 20)) {
            bytes += block.size();
        }
        return static_cast<double>(bytes) / (2.0 * reader.GetChannels() * reader.GetWaveFormat());
    }

    int block_ = 0;
};

} // namespace

// When the first output is written, the second is nearly encoded as well.
TEST_F(Waits, StopInAnOutputThatIsEncodedAlready) {
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chOGG);
    AtBlock(blocks + blocks * 9 / 10, [this] { converter_.Run.Image2_Click(); });
    Start();
    EXPECT_LT(events_.SinceLastMs(), longestBehindStopMs);
    Tell("Stop in Ogg Vorbis");
    EXPECT_NEAR(SecondsOf(QStringLiteral("a.ogg")), seconds * 0.9, 0.1);
    EXPECT_NEAR(SecondsOf(QStringLiteral("a.mp3")), seconds, 0.1);
}

TEST_F(Waits, StopInAnExistingFileThatIsEncodedAlready) {
    folder_.Write(QStringLiteral("out/a.mp2"), "old");
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chMP2);
    AtBlock(blocks + blocks * 9 / 10, [this] { converter_.Run.Image2_Click(); });
    Start();
    EXPECT_LT(events_.SinceLastMs(), longestBehindStopMs);
    Tell("Stop in MPEG layer 2");
    EXPECT_NEAR(SecondsOf(QStringLiteral("a.mp2")), seconds * 0.9, 0.1);
}

// The disk holds the first output, and half of the last, which is still being encoded while it is written.
TEST_F(Waits, FullDiskInAnOutputThatIsEncodedAhead) {
    HoldRates();
    Tick(OutputBox::chWMA);
    Tick(OutputBox::chOGG);
    constexpr qint64 diskBytes = qint64{seconds} * 128000 / 8 / 2;
    std::optional<SmallDisk> disk;
    AtBlock(blocks, [&] { disk.emplace(diskBytes); });
    Start();
    disk.reset();
    EXPECT_LT(events_.LongestMs(), longestMs);
    Tell("full disk in Ogg Vorbis");
    // What there was room for stays.
    EXPECT_LE(Output(QStringLiteral("a.ogg")).size(), diskBytes);
    EXPECT_GE(Output(QStringLiteral("a.ogg")).size(), diskBytes / 2);
}

} // namespace kestrune
