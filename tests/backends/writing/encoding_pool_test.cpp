#include "backends/writing/encoding_output.h"
#include "backends/writing/encoding_pool.h"

#include "backends/encoders/encoder_factory.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFileInfo>

#include <atomic>
#include <future>

namespace kestrune {

namespace {

// Writes what it gets, and waits at each block for a gate if it has one.
class GatedEncoder : public SampleEncoder {
public:
    explicit GatedEncoder(std::shared_future<void> gate = {}, Outcome begin = Outcome::Ok,
                          int failingWrite = -1)
        : gate_(std::move(gate)), begin_(begin), failingWrite_(failingWrite) {}

    EncoderInput Input() const override { return {8000, 1, false}; }
    Outcome Begin(QIODevice& out) override {
        out_ = &out;
        return begin_;
    }
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override {
        if (gate_.valid()) {
            gate_.wait();
        }
        if (writes_++ == failingWrite_) {
            return Outcome::WriteFailed;
        }
        out_->write(reinterpret_cast<const char*>(samples), frames * 2);
        return Outcome::Ok;
    }
    Outcome Finish() override {
        out_->write("end");
        return Outcome::Ok;
    }

private:
    std::shared_future<void> gate_;
    Outcome begin_;
    int failingWrite_;
    int writes_ = 0;
    QIODevice* out_ = nullptr;
};

// Takes so many bytes, and the others once it is told to go on.
class StallingDevice : public QBuffer {
public:
    explicit StallingDevice(qint64 freeBytes) : freeBytes_(freeBytes) { open(QIODevice::ReadWrite); }
    void GoOn() { gate_.set_value(); }

protected:
    qint64 writeData(const char* data, qint64 bytes) override {
        if (size() >= freeBytes_) {
            goOn_.wait();
        }
        return QBuffer::writeData(data, bytes);
    }

private:
    qint64 freeBytes_;
    std::promise<void> gate_;
    std::shared_future<void> goOn_ = gate_.get_future().share();
};

std::unique_ptr<EncodingPipeline> Piped(std::unique_ptr<SampleEncoder> encoder) {
    return std::make_unique<EncodingPipeline>(std::move(encoder));
}

// The file of a job in memory.
QByteArray FileOf(EncodingPool& pool, const EncodingJobPtr& job) {
    QBuffer out;
    out.open(QIODevice::ReadWrite);
    pool.MoveTo(job, out);
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
    return out.data();
}

QByteArray Block(int number) {
    return BytesOf(NoiseAndTones(500, 1, 8000, static_cast<quint32>(number)));
}

} // namespace

TEST(EncodingPool, BlocksOfAJobKeepTheirOrder) {
    EncodingPool pool(2);
    std::vector<EncodingJobPtr> jobs;
    QByteArray expected;
    for (int job = 0; job < 5; ++job) {
        jobs.push_back(pool.AddInMemory(Piped(std::make_unique<GatedEncoder>())));
    }
    for (int block = 0; block < 200; ++block) {
        expected += Block(block);
        for (const EncodingJobPtr& job : jobs) {
            pool.Push(job, Block(block));
        }
    }
    for (const EncodingJobPtr& job : jobs) {
        pool.End(job);
        EXPECT_EQ(FileOf(pool, job), expected + "end");
    }
}

TEST(EncodingPool, JobsMoveAtAnyTime) {
    EncodingPool pool(2);
    QByteArray expected;
    for (int block = 0; block < 30; ++block) {
        expected += Block(block);
    }
    for (int moving = 0; moving <= 30; moving += 3) {
        QBuffer out;
        ASSERT_TRUE(out.open(QIODevice::ReadWrite));
        const EncodingJobPtr job = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
        pool.Push(job, Block(0));
        EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
        for (int block = 1; block < 30; ++block) {
            if (block == moving) {
                pool.MoveTo(job, out);
            }
            pool.Push(job, Block(block));
        }
        pool.End(job);
        if (moving == 0 || moving == 30) {
            EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
            pool.MoveTo(job, out);
        }
        EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
        EXPECT_EQ(out.data(), expected + "end") << moving;
    }
}

TEST(EncodingPool, AMoveIsWaitedForByParts) {
    constexpr qsizetype fileBytes = Q_INT64_C(8) << 20;
    EncodingPool pool(1);
    const EncodingJobPtr job = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
    pool.Push(job, QByteArray(fileBytes, 'x'));
    EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
    StallingDevice out(fileBytes / 2);
    pool.MoveTo(job, out);
    EXPECT_EQ(pool.WaitForMove(job, 0), Outcome::Ok);
    EXPECT_EQ(pool.WaitForMove(job, 0.5), Outcome::Ok);
    EXPECT_EQ(out.size(), fileBytes / 2);
    out.GoOn();
    EXPECT_EQ(pool.WaitForMove(job, 1), Outcome::Ok);
    EXPECT_EQ(out.size(), fileBytes);
    pool.End(job);
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
    EXPECT_EQ(out.data(), QByteArray(fileBytes, 'x') + "end");
}

// A thread that holds a job need not have a block of it.
TEST(EncodingPool, EndedInItsMoveAJobKeepsAllItsBlocks) {
    constexpr qsizetype fileBytes = Q_INT64_C(2) << 20;
    EncodingPool pool(1);
    const EncodingJobPtr job = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
    pool.Push(job, QByteArray(fileBytes, 'x'));
    EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
    StallingDevice out(fileBytes / 2);
    pool.MoveTo(job, out);
    EXPECT_EQ(pool.WaitForMove(job, 0.5), Outcome::Ok);
    for (int block = 1; block <= 5; ++block) {
        pool.Push(job, Block(block));
    }
    EXPECT_TRUE(pool.EndAfter(job, 3));
    out.GoOn();
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
    EXPECT_EQ(out.data().mid(fileBytes), Block(1) + Block(2) + "end");
}

TEST(EncodingPool, EndedHereAJobMovesNoMoreThanIsNeeded) {
    constexpr qsizetype fileBytes = Q_INT64_C(16) << 20;
    EncodingPool pool(1);
    const EncodingJobPtr job = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
    pool.Push(job, QByteArray(fileBytes, 'x'));
    EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
    StallingDevice out(fileBytes / 4);
    pool.MoveTo(job, out);
    EXPECT_EQ(pool.WaitForMove(job, 0.25), Outcome::Ok);
    // They wait behind the move.
    for (int block = 1; block <= 5; ++block) {
        pool.Push(job, Block(block));
    }
    pool.EndHere(job, 0.5);
    out.GoOn();
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
    // The end stands where it would stand if nothing were left out.
    EXPECT_EQ(out.data().left(fileBytes / 2), QByteArray(fileBytes / 2, 'x'));
    EXPECT_EQ(out.data().at(fileBytes - 1), '\0');
    EXPECT_EQ(out.data().mid(fileBytes), "end");
}

TEST(EncodingPool, MoveThatFailsIsTold) {
    EncodingPool pool(2);
    QBuffer closed;
    const EncodingJobPtr job = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
    pool.Push(job, Block(0));
    EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
    pool.MoveTo(job, closed);
    pool.Push(job, Block(1));
    pool.End(job);
    EXPECT_EQ(pool.WaitForMove(job, 1), Outcome::WriteFailed);
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::WriteFailed);
}

TEST(EncodingPool, WritesToTheDeviceOfABegunJob) {
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::ReadWrite));
    EncodingPool pool(2);
    auto pipeline = Piped(std::make_unique<GatedEncoder>());
    ASSERT_EQ(pipeline->Begin(out), Outcome::Ok);
    const EncodingJobPtr job = pool.Add(std::move(pipeline));
    pool.Push(job, Block(1));
    EXPECT_EQ(pool.WaitForBlocks(job, 1), Outcome::Ok);
    EXPECT_EQ(out.data(), Block(1));
    pool.End(job);
    EXPECT_EQ(pool.WaitForEnd(job), Outcome::Ok);
    EXPECT_EQ(out.data(), Block(1) + "end");
}

TEST(EncodingPool, PreferredJobGoesFirst) {
    std::promise<void> open;
    const std::shared_future<void> gate = open.get_future().share();
    EncodingPool pool(1);
    const EncodingJobPtr first = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>(gate)));
    pool.Push(first, Block(0));
    // The only thread waits in the first job while the others come.
    std::vector<EncodingJobPtr> others;
    for (int job = 0; job < 4; ++job) {
        others.push_back(pool.AddInMemory(Piped(std::make_unique<GatedEncoder>())));
        for (int block = 0; block < 50; ++block) {
            pool.Push(others.back(), Block(block));
        }
    }
    std::promise<void> never;
    const EncodingJobPtr preferred = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
    pool.Push(preferred, Block(1));
    pool.End(preferred);
    const std::shared_future<void> closed = never.get_future().share();
    const EncodingJobPtr stuck = pool.AddInMemory(Piped(std::make_unique<GatedEncoder>(closed)));
    pool.Push(stuck, Block(1));
    pool.Prefer(preferred);
    open.set_value();
    // Would hang behind the stuck job if the order were another one.
    EXPECT_EQ(pool.WaitForEnd(preferred), Outcome::Ok);
    never.set_value();
}

TEST(EncodingPool, RefusedBeginAndFailedWritesAreToldForGood) {
    EncodingPool pool(2);
    const EncodingJobPtr refused = pool.AddInMemory(
        Piped(std::make_unique<GatedEncoder>(std::shared_future<void>(), Outcome::NotSupported)));
    const EncodingJobPtr failing =
        pool.AddInMemory(Piped(std::make_unique<GatedEncoder>(std::shared_future<void>(), Outcome::Ok, 3)));
    for (int block = 0; block < 10; ++block) {
        pool.Push(refused, Block(block));
        pool.Push(failing, Block(block));
    }
    pool.End(refused);
    pool.End(failing);
    EXPECT_EQ(pool.WaitForBlocks(refused, 10), Outcome::NotSupported);
    EXPECT_EQ(pool.WaitForEnd(refused), Outcome::NotSupported);
    EXPECT_EQ(pool.WaitForBlocks(failing, 10), Outcome::WriteFailed);
    EXPECT_EQ(pool.WaitForEnd(failing), Outcome::WriteFailed);
    EXPECT_FALSE(pool.IsUnderWay(refused));
    EXPECT_FALSE(pool.IsUnderWay(failing));
}

TEST(EncodingPool, DroppedJobsAndTheEndOfThePoolDoNotWaitForMoreThanABlock) {
    std::promise<void> open;
    const std::shared_future<void> gate = open.get_future().share();
    auto pool = std::make_unique<EncodingPool>(1);
    const EncodingJobPtr job = pool->AddInMemory(Piped(std::make_unique<GatedEncoder>(gate)));
    for (int block = 0; block < 10; ++block) {
        pool->Push(job, Block(block));
    }
    pool->Drop(job);
    pool->AddInMemory(Piped(std::make_unique<GatedEncoder>(gate)));
    open.set_value();
    pool.reset();
}

class EncodingOutputTest : public testing::Test {
protected:
    TestFolder folder_;
    const QString path_ = folder_.Path(QStringLiteral("a.wav"));
    const OutputFormat format_{FormatKind::Pcm, 8000, 1, 16, 0, RawPcm, 0};
    EncodingPool pool_{2};
    std::shared_ptr<Blocks> blocks_ = std::make_shared<Blocks>();

    EncodingOutputTest() {
        for (int block = 0; block < 20; ++block) {
            blocks_->push_back(Block(block));
        }
    }
    // Encoded by another encoder than the format's, so that the file tells which one made it.
    AheadOutput Ahead() {
        const EncodingJobPtr job = pool_.AddInMemory(Piped(std::make_unique<GatedEncoder>()));
        for (const QByteArray& block : *blocks_) {
            pool_.Push(job, block);
        }
        pool_.End(job);
        return {job, blocks_, {8000, 1}};
    }
    QByteArray AllSamples(int blocks) const {
        QByteArray all;
        for (int block = 0; block < blocks; ++block) {
            all += Block(block);
        }
        return all;
    }
    // What the format's own encoder makes of the first blocks.
    QByteArray Encoded(int blocks) {
        EncodingOutput output(nullptr);
        const QString path = folder_.Path(QStringLiteral("judge.wav"));
        EXPECT_EQ(output.Open(path, format_), Outcome::Ok);
        EXPECT_EQ(output.Write(AllSamples(blocks)), Outcome::Ok);
        EXPECT_EQ(output.Close(), Outcome::Ok);
        return ReadWholeFile(path);
    }
};

TEST_F(EncodingOutputTest, WhatWasEncodedAheadIsTakenForTheSameBlocks) {
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, Ahead()), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 20; ++block) {
        // Alternately the very memory and equal samples elsewhere.
        EXPECT_EQ(output.Write(block % 2 == 0 ? (*blocks_)[static_cast<size_t>(block)] : Block(block)),
                  Outcome::Ok);
    }
    EXPECT_EQ(output.Close(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), AllSamples(20) + "end");
}

TEST_F(EncodingOutputTest, FewerBlocksAreEncodedAnew) {
    for (const int blocks : {0, 1, 7, 19}) {
        EncodingOutput output(&pool_);
        const AheadOutput ahead = Ahead();
        // Once the encoder is through it stands beyond any part of its blocks.
        EXPECT_EQ(pool_.WaitForEnd(ahead.job), Outcome::Ok);
        ASSERT_EQ(output.OpenAhead(path_, format_, ahead), Outcome::Ok);
        output.SetSource({8000, 1});
        for (int block = 0; block < blocks; ++block) {
            EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
        }
        EXPECT_EQ(output.Close(), Outcome::Ok);
        EXPECT_EQ(ReadWholeFile(path_), Encoded(blocks));
    }
}

TEST_F(EncodingOutputTest, FewerBlocksEndTheEncoderThatStandsThere) {
    std::promise<void> open;
    const EncodingJobPtr job =
        pool_.AddInMemory(Piped(std::make_unique<GatedEncoder>(open.get_future().share())));
    for (const QByteArray& block : *blocks_) {
        pool_.Push(job, block);
    }
    pool_.End(job);
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, {job, blocks_, {8000, 1}}), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 3; ++block) {
        EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
    }
    std::thread opener([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        open.set_value();
    });
    EXPECT_EQ(output.Close(), Outcome::Ok);
    opener.join();
    EXPECT_EQ(ReadWholeFile(path_), AllSamples(3) + "end");
}

TEST_F(EncodingOutputTest, MoreBlocksAreEncodedAnew) {
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, Ahead()), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 25; ++block) {
        EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
    }
    EXPECT_EQ(output.Close(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), Encoded(25));
}

TEST_F(EncodingOutputTest, OtherSamplesAreEncodedAnew) {
    blocks_->at(11)[3] = static_cast<char>(blocks_->at(11)[3] + 1);
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, Ahead()), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 20; ++block) {
        EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
    }
    EXPECT_EQ(output.Close(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), Encoded(20));
}

TEST_F(EncodingOutputTest, WhatWasStoredOfOtherSamplesIsGone) {
    const AheadOutput ahead = Ahead();
    EXPECT_EQ(pool_.WaitForEnd(ahead.job), Outcome::Ok);
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, ahead), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 19; ++block) {
        EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
    }
    EXPECT_EQ(output.Write(Block(3)), Outcome::Ok);
    EXPECT_EQ(output.Close(), Outcome::Ok);
    EncodingOutput judge(nullptr);
    const QString judged = folder_.Path(QStringLiteral("judge.wav"));
    ASSERT_EQ(judge.Open(judged, format_), Outcome::Ok);
    EXPECT_EQ(judge.Write(AllSamples(19) + Block(3)), Outcome::Ok);
    EXPECT_EQ(judge.Close(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), ReadWholeFile(judged));
}

TEST_F(EncodingOutputTest, AnotherSourceShapeIsEncodedAnew) {
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, Ahead()), Outcome::Ok);
    output.SetSource({8000, 2});
    for (int block = 0; block < 20; ++block) {
        EXPECT_EQ(output.Write(Block(block)), Outcome::Ok);
    }
    EXPECT_EQ(output.Close(), Outcome::Ok);
    constexpr qint64 headerBytes = 44;
    EXPECT_EQ(QFileInfo(path_).size() - headerBytes, AllSamples(20).size() / 2);
}

// The same encoder would fail over the same samples again, and a full place stays full.
TEST_F(EncodingOutputTest, WhatFailedAheadHasFailed) {
    const EncodingJobPtr job =
        pool_.AddInMemory(Piped(std::make_unique<GatedEncoder>(std::shared_future<void>(), Outcome::Ok, 5)));
    for (const QByteArray& block : *blocks_) {
        pool_.Push(job, block);
    }
    pool_.End(job);
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, {job, blocks_, {8000, 1}}), Outcome::Ok);
    output.SetSource({8000, 1});
    for (int block = 0; block < 20; ++block) {
        const Outcome outcome = output.Write(Block(block));
        if (block >= 9) {
            EXPECT_EQ(outcome, Outcome::WriteFailed) << block;
        }
    }
    EXPECT_EQ(output.Close(), Outcome::WriteFailed);
}

TEST_F(EncodingOutputTest, WriterIsHeldBackByASlowEncoder) {
    std::promise<void> open;
    EncodingJobPtr job = pool_.AddInMemory(Piped(std::make_unique<GatedEncoder>(open.get_future().share())));
    for (const QByteArray& block : *blocks_) {
        pool_.Push(job, block);
    }
    pool_.End(job);
    EncodingOutput output(&pool_);
    ASSERT_EQ(output.OpenAhead(path_, format_, {job, blocks_, {8000, 1}}), Outcome::Ok);
    output.SetSource({8000, 1});
    std::atomic<int> written = 0;
    std::thread writer([&] {
        for (int block = 0; block < 20; ++block) {
            output.Write(Block(block));
            ++written;
        }
    });
    while (written < 4) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(written, 4);
    open.set_value();
    writer.join();
    EXPECT_EQ(output.Close(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), AllSamples(20) + "end");
}

TEST_F(EncodingOutputTest, TargetThatCannotBeWrittenIsRefusedAhead) {
    EncodingOutput output(&pool_);
    EXPECT_EQ(output.OpenAhead(folder_.Path(QStringLiteral("none/a.wav")), format_, Ahead()),
              Outcome::WriteFailed);
    EXPECT_EQ(output.Write(Block(0)), Outcome::NotOpen);
    EXPECT_EQ(output.Close(), Outcome::NotOpen);
}

} // namespace kestrune
