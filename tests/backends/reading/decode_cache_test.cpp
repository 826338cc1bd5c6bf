#include "backends/reading/decode_cache.h"

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <random>

namespace kestrune {

namespace {

constexpr qint64 blockBytes = 8000;
constexpr qint64 plenty = Q_INT64_C(1) << 24;

// Counts up, and notes how far the decoder ran ahead of the reader.
class CountingSource : public SampleSource {
public:
    struct Counts {
        std::atomic<qint64> readFrames = 0; // by the reader of the decoder
        std::atomic<qint64> mostAhead = 0;  // frames
    };
    CountingSource(qint64 frames, qint64 toldFrames, Counts& counts)
        : frames_(frames), toldFrames_(toldFrames), counts_(counts) {
        info_.rateHz = 8000;
        info_.channels = 1;
    }
    const SourceInfo& Info() const override { return info_; }
    qint64 Read(qint16* out, qint64 frames) override {
        const qint64 part = std::min(frames, frames_ - at_);
        for (qint64 frame = 0; frame < part; ++frame) {
            out[frame] = static_cast<qint16>((at_ + frame) % 30011);
        }
        at_ += part;
        counts_.mostAhead = std::max(counts_.mostAhead.load(), at_ - counts_.readFrames);
        return part;
    }
    qint64 SeekTo(qint64 frame) override {
        at_ = std::min(frame, frames_);
        return at_;
    }
    qint64 LengthFrames() override { return toldFrames_; }

private:
    SourceInfo info_;
    qint64 frames_;
    qint64 toldFrames_;
    qint64 at_ = 0;
    Counts& counts_;
};

class DecodeCacheTest : public testing::Test {
protected:
    TestFolder folder_;
    QByteArray samples_ = BytesOf(NoiseAndTones(30011, 2, 44100, 7));
    QString path_ = folder_.Write(QStringLiteral("a.wav"), WaveFile({1, 2, 44100, 16}, samples_));
    DecodeCache cache_;

    DecodeCacheTest() { cache_.ReadAhead(plenty); }

    static std::vector<QByteArray> ReadBlocks(DecodeCache& cache) {
        std::vector<QByteArray> blocks;
        for (QByteArray block = cache.Read(blockBytes); !block.isEmpty(); block = cache.Read(blockBytes)) {
            blocks.push_back(block);
        }
        return blocks;
    }
    static QByteArray Joined(const std::vector<QByteArray>& blocks) {
        QByteArray all;
        for (const QByteArray& block : blocks) {
            all += block;
        }
        return all;
    }
    std::vector<QByteArray> OpenAndRead(const QString& path) {
        EXPECT_EQ(cache_.Open(path, {}), Outcome::Ok);
        std::vector<QByteArray> blocks = ReadBlocks(cache_);
        cache_.Close();
        return blocks;
    }
    static bool ShareMemory(const std::vector<QByteArray>& one, const std::vector<QByteArray>& other) {
        return std::equal(
            one.begin(), one.end(), other.begin(), other.end(),
            [](const QByteArray& a, const QByteArray& b) { return a.constData() == b.constData(); });
    }
};

} // namespace

TEST_F(DecodeCacheTest, SecondOpeningSharesTheBlocks) {
    const std::vector<QByteArray> first = OpenAndRead(path_);
    EXPECT_EQ(Joined(first), samples_);
    EXPECT_TRUE(ShareMemory(first, OpenAndRead(path_)));
    EXPECT_TRUE(ShareMemory(first, OpenAndRead(path_)));
}

TEST_F(DecodeCacheTest, NothingIsKeptUnlessAsked) {
    cache_.ReadAtOnce();
    const std::vector<QByteArray> first = OpenAndRead(path_);
    EXPECT_EQ(Joined(first), samples_);
    EXPECT_FALSE(ShareMemory(first, OpenAndRead(path_)));
}

TEST_F(DecodeCacheTest, ReadingAheadAloneKeepsNothing) {
    cache_.ReadAhead(0);
    const std::vector<QByteArray> first = OpenAndRead(path_);
    EXPECT_EQ(Joined(first), samples_);
    const std::vector<QByteArray> second = OpenAndRead(path_);
    EXPECT_EQ(Joined(second), samples_);
    EXPECT_FALSE(ShareMemory(first, second));
}

TEST_F(DecodeCacheTest, KeepingNoMoreLetsTheBlocksGo) {
    const std::vector<QByteArray> first = OpenAndRead(path_);
    cache_.ReadAtOnce();
    cache_.ReadAhead(plenty);
    const std::vector<QByteArray> second = OpenAndRead(path_);
    EXPECT_EQ(Joined(second), samples_);
    EXPECT_FALSE(ShareMemory(first, second));
}

TEST_F(DecodeCacheTest, AnotherFileThatIsNotReadKeepsTheBlocks) {
    const QString other = folder_.Write(QStringLiteral("b.wav"), WaveFile({1, 1, 8000, 16}, samples_));
    const std::vector<QByteArray> first = OpenAndRead(path_);
    ASSERT_EQ(cache_.Open(other, {}), Outcome::Ok);
    EXPECT_EQ(cache_.Info().rateHz, 8000);
    cache_.Close();
    EXPECT_TRUE(ShareMemory(first, OpenAndRead(path_)));
}

TEST_F(DecodeCacheTest, FileChangedInPlaceIsReadAnew) {
    OpenAndRead(path_);
    const QByteArray other = BytesOf(NoiseAndTones(30011, 2, 44100, 8));
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime before = file.fileTime(QFile::FileModificationTime);
    file.write(WaveFile({1, 2, 44100, 16}, other));
    file.flush();
    ASSERT_TRUE(file.setFileTime(before.addSecs(2), QFile::FileModificationTime));
    file.close();
    EXPECT_EQ(Joined(OpenAndRead(path_)), other);
}

TEST_F(DecodeCacheTest, ReplacedFileIsReadAnew) {
    OpenAndRead(path_);
    const QByteArray other = BytesOf(NoiseAndTones(30011, 2, 44100, 8));
    const QString beside = folder_.Write(QStringLiteral("b.wav"), WaveFile({1, 2, 44100, 16}, other));
    ASSERT_TRUE(QFile::remove(path_));
    ASSERT_TRUE(QFile::rename(beside, path_));
    EXPECT_EQ(Joined(OpenAndRead(path_)), other);
}

TEST_F(DecodeCacheTest, VanishedFileIsNotFound) {
    OpenAndRead(path_);
    ASSERT_TRUE(QFile::remove(path_));
    EXPECT_EQ(cache_.Open(path_, {}), Outcome::NotFound);
    EXPECT_FALSE(cache_.IsOpen());
}

TEST_F(DecodeCacheTest, HeaderlessFileIsReadInTheFormatOfItsOpening) {
    const QString path = folder_.Write(QStringLiteral("a.raw"), samples_);
    HeaderlessFormats formats;
    ASSERT_EQ(cache_.Open(path, formats), Outcome::Ok);
    const std::vector<QByteArray> first = ReadBlocks(cache_);
    formats.raw.channels = 1;
    formats.raw.rateHz = 8000;
    ASSERT_EQ(cache_.Open(path, formats), Outcome::Ok);
    EXPECT_EQ(cache_.Info().channels, 1);
    const std::vector<QByteArray> second = ReadBlocks(cache_);
    EXPECT_EQ(Joined(second), samples_);
    EXPECT_FALSE(ShareMemory(first, second));
}

TEST_F(DecodeCacheTest, FormatsOfHeaderlessFilesAreNothingToOthers) {
    const std::vector<QByteArray> first = OpenAndRead(path_);
    HeaderlessFormats formats;
    formats.vox.rateHz = 44100;
    ASSERT_EQ(cache_.Open(path_, formats), Outcome::Ok);
    EXPECT_TRUE(ShareMemory(first, ReadBlocks(cache_)));
}

TEST_F(DecodeCacheTest, LongerFileIsReadWholeAndNotKept) {
    cache_.ReadAhead(50000);
    const std::vector<QByteArray> first = OpenAndRead(path_);
    EXPECT_EQ(Joined(first), samples_);
    const std::vector<QByteArray> second = OpenAndRead(path_);
    EXPECT_EQ(Joined(second), samples_);
    EXPECT_FALSE(ShareMemory(first, second));
}

TEST_F(DecodeCacheTest, LengthIsThatOfTheFile) {
    ASSERT_EQ(cache_.Open(path_, {}), Outcome::Ok);
    EXPECT_EQ(cache_.LengthBytes(), samples_.size());
    cache_.Read(blockBytes);
    EXPECT_EQ(cache_.LengthBytes(), samples_.size());
    ReadBlocks(cache_);
    EXPECT_EQ(cache_.LengthBytes(), samples_.size());
    ASSERT_EQ(cache_.Open(path_, {}), Outcome::Ok);
    EXPECT_EQ(cache_.LengthBytes(), samples_.size());
}

TEST_F(DecodeCacheTest, EmptyFileEndsAtOnce) {
    const QString path = folder_.Write(QStringLiteral("b.wav"), WaveFile({1, 2, 44100, 16}, {}));
    for (int opening = 0; opening < 2; ++opening) {
        ASSERT_EQ(cache_.Open(path, {}), Outcome::Ok);
        EXPECT_TRUE(cache_.Read(blockBytes).isEmpty());
        EXPECT_TRUE(cache_.Read(blockBytes).isEmpty());
        EXPECT_EQ(cache_.SeekTo(100), 0);
    }
}

TEST_F(DecodeCacheTest, ClosedEarlyIsReadAnew) {
    ASSERT_EQ(cache_.Open(path_, {}), Outcome::Ok);
    EXPECT_EQ(cache_.Read(blockBytes), samples_.left(blockBytes));
    cache_.Close();
    EXPECT_EQ(Joined(OpenAndRead(path_)), samples_);
}

TEST_F(DecodeCacheTest, AnyOrderOfReadingGivesTheSame) {
    for (const qint64 kept : {plenty, Q_INT64_C(20000), Q_INT64_C(0)}) {
        cache_.ReadAhead(kept);
        std::mt19937 random(static_cast<quint32>(kept));
        for (int opening = 0; opening < 60; ++opening) {
            ASSERT_EQ(cache_.Open(path_, {}), Outcome::Ok);
            qint64 at = 0;
            for (int call = 0; call < 12; ++call) {
                if (random() % 4 == 0) {
                    const qint64 wanted = random() % 3 == 0 ? static_cast<qint64>(random() % 200000)
                                                            : static_cast<qint64>(random() % 20) * blockBytes;
                    at = std::min<qint64>(wanted / 4 * 4, samples_.size());
                    ASSERT_EQ(cache_.SeekTo(wanted), at);
                } else {
                    const qint64 wanted =
                        random() % 5 == 0 ? static_cast<qint64>(random() % 9000) : blockBytes;
                    const QByteArray block = cache_.Read(wanted);
                    ASSERT_EQ(block, samples_.mid(at, wanted / 4 * 4)) << "at " << at;
                    at += block.size();
                }
            }
        }
    }
}

TEST(AheadDecoder, StaysABoundedWayAheadOfALongFile) {
    CountingSource::Counts counts;
    constexpr qint64 frames = 20000000;
    constexpr qint64 boundFrames = Q_INT64_C(4) << 20;
    for (const qint64 told : {frames, Q_INT64_C(1000)}) {
        counts.readFrames = 0;
        counts.mostAhead = 0;
        AheadDecoder decoder(std::make_unique<CountingSource>(frames, told, counts), 88200, 1 << 20);
        qint64 number = 0;
        qint64 bytes = 0;
        for (QByteArray block = decoder.Block(0); !block.isEmpty(); block = decoder.Block(++number)) {
            const auto* first = reinterpret_cast<const qint16*>(block.constData());
            ASSERT_EQ(*first, bytes / 2 % 30011);
            bytes += block.size();
            counts.readFrames = bytes / 2;
        }
        EXPECT_EQ(bytes, 2 * frames);
        EXPECT_LT(counts.mostAhead, boundFrames + 2 * 44100);
        EXPECT_FALSE(decoder.IsWhole());
        EXPECT_FALSE(decoder.Has(0));
    }
}

TEST(AheadDecoder, BlocksLargerThanTheBoundComeToo) {
    CountingSource::Counts counts;
    AheadDecoder decoder(std::make_unique<CountingSource>(20000000, 20000000, counts), 12000000, 1 << 20);
    EXPECT_EQ(decoder.Block(0).size(), 12000000);
    EXPECT_EQ(decoder.Block(1).size(), 12000000);
    EXPECT_EQ(decoder.Block(2).size(), 12000000);
    EXPECT_EQ(decoder.Block(3).size(), 4000000);
    EXPECT_TRUE(decoder.Block(4).isEmpty());
    EXPECT_EQ(decoder.TotalBytes(), 40000000);
}

} // namespace kestrune
