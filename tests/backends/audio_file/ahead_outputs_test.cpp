// Outputs that are expected, and the same files with and without.
#include "backends/audio_file/codec_file.h"
#include "backends/encoders/encoder_factory.h"
#include "backends/writing/ahead_outputs.h"
#include "support/small_disk.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <array>
#include <functional>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;
constexpr int frames = rateHz * 4;
constexpr unsigned long msUntilAllIsEncoded = 300;

struct Stage {
    QString name;
    std::function<Outcome(CodecFile&)> setFormat; // none: by the extension
};

std::vector<Stage> Stages() {
    return {
        {QStringLiteral("a_10.wma"), [](CodecFile& file) { return file.SetFormatWMA(10); }},
        {QStringLiteral("a.mp3"), {}},
        {QStringLiteral("a_ADPCM.wav"), [](CodecFile& file) { return file.SetFormatADPCM(44100, 2); }},
        {QStringLiteral("a_DSP.wav"), [](CodecFile& file) { return file.SetFormatDSP(); }},
        {QStringLiteral("a.mp2"), {}},
        {QStringLiteral("a.vox"), [](CodecFile& file) { return file.SetFormatVOX(8000); }},
        {QStringLiteral("a.ogg"), {}},
        {QStringLiteral("a_GSM.wav"), [](CodecFile& file) { return file.SetFormatGSM(22050); }},
        {QStringLiteral("a.g726"), [](CodecFile& file) { return file.SetFormatG726(8000, 4); }},
        {QStringLiteral("a_ULAW.raw"), [](CodecFile& file) { return file.SetFormatRaw(2, 44100, 2, 16); }},
        {QStringLiteral("a_PCM.wav"), [](CodecFile& file) { return file.SetFormatPCMFreq(22050, 1, 16); }},
    };
}

class Expected : public testing::Test {
protected:
    TestFolder folder_;
    QByteArray samples_ = BytesOf(NoiseAndTones(frames, 2, rateHz, 9));
    QString input_ = folder_.Write(QStringLiteral("input.wav"), WaveFile({1, 2, rateHz, 16}, samples_));
    CodecFile in_;
    CodecFile out_;

    Expected() {
        QDir(QFileInfo(input_).path()).mkdir(QStringLiteral("out"));
        in_.SetFlag(KSTAudioFile2::wholeFilesAgain);
        out_.SetFlag(KSTAudioFile2::wholeFiles);
    }
    QString Path(const QString& name) const { return folder_.Path(QStringLiteral("out/") + name); }

    QString PartPath(const Stage& stage, int blocks) const {
        return Path(QString::number(blocks) + QLatin1Char('_') + stage.name);
    }

    static void SetFormat(CodecFile& file, const Stage& stage) {
        if (stage.setFormat) {
            EXPECT_EQ(stage.setFormat(file), Outcome::Ok) << stage.name.toStdString();
        }
    }
    void Expect(const std::vector<Stage>& stages) {
        out_.ForgetExpectedOutputs();
        for (const Stage& stage : stages) {
            SetFormat(out_, stage);
            out_.ExpectOutput(Path(stage.name));
        }
    }
    // As the converter copies; `blocks` below 0 for all.
    void Run(const Stage& stage, int blocks = -1) {
        SetFormat(out_, stage);
        ASSERT_EQ(in_.OpenRead(input_), Outcome::Ok);
        ASSERT_EQ(out_.Create(Path(stage.name)), Outcome::Ok) << stage.name.toStdString();
        out_.SetSourceFormat(in_.GetWaveFormat(), in_.GetChannels());
        const qint64 size = static_cast<qint64>(in_.GetChannels()) * in_.GetWaveFormat();
        for (QByteArray block = in_.ReadBlock(size); !block.isEmpty() && blocks != 0;
             block = in_.ReadBlock(size)) {
            EXPECT_EQ(out_.WriteBlock(block), Outcome::Ok);
            --blocks;
        }
        EXPECT_EQ(out_.CloseFile(), Outcome::Ok);
        EXPECT_EQ(in_.CloseFile(), Outcome::Ok);
    }
    // The same file by an object that does all on this thread.
    QByteArray Plain(const Stage& stage, const QByteArray& samples) {
        CodecFile file;
        SetFormat(file, stage);
        const QString path = folder_.Path(QStringLiteral("plain_") + stage.name);
        EXPECT_EQ(file.Create(path), Outcome::Ok);
        file.SetSourceFormat(rateHz, 2);
        EXPECT_EQ(file.WriteBlock(samples), Outcome::Ok);
        EXPECT_EQ(file.CloseFile(), Outcome::Ok);
        return ReadWholeFile(path);
    }
    QByteArray Decoded(const QString& path) {
        CodecFile file;
        EXPECT_EQ(file.OpenRead(path), Outcome::Ok) << path.toStdString();
        return ReadToEnd(file);
    }
    // As another program tells it, in seconds; 0 for a file without a header.
    static double TellsSeconds(const QString& path) {
        static const QStringList headerless{QStringLiteral("vox"), QStringLiteral("g726"),
                                            QStringLiteral("raw")};
        QByteArray told;
        if (!headerless.contains(QFileInfo(path).suffix())) {
            EXPECT_TRUE(RunTool(QStringLiteral("ffprobe"),
                                {QStringLiteral("-v"), QStringLiteral("error"),
                                 QStringLiteral("-show_entries"), QStringLiteral("format=duration"),
                                 QStringLiteral("-of"), QStringLiteral("csv=p=0"), path},
                                &told));
        }
        return told.trimmed().toDouble();
    }
    // Not the very file that a coder makes of the part, but as long, and the same sound but for the last
    // block of the coding.
    void ExpectPart(const Stage& stage, const QString& path, const QByteArray& samples) {
        const std::string name = stage.name.toStdString();
        Plain(stage, samples);
        const QString plain = folder_.Path(QStringLiteral("plain_") + stage.name);
        EXPECT_NEAR(TellsSeconds(path), TellsSeconds(plain), 0.002) << name;
        const QByteArray wanted = Decoded(plain);
        const QByteArray got = Decoded(path);
        // Windows Media ends with a packet of the container, which holds eight blocks of the coding here.
        const qint64 mostMore = stage.name.endsWith(QStringLiteral(".wma")) ? 8 * 2048 * 4 : 0;
        EXPECT_GE(got.size(), wanted.size() - 4) << name;
        EXPECT_LE(got.size(), wanted.size() + mostMore + 4) << name;
        constexpr qint64 lastBytes = 2 * 4096 * 4;
        const qint64 alike = std::max<qint64>(wanted.size() - lastBytes, wanted.size() / 4);
        EXPECT_TRUE(got.left(alike) == wanted.left(alike)) << name;
    }
    void ExpectPlain(const Stage& stage, const QByteArray& samples) {
        const QByteArray plain = Plain(stage, samples);
        EXPECT_FALSE(plain.isEmpty());
        EXPECT_TRUE(ReadWholeFile(Path(stage.name)) == plain) << stage.name.toStdString();
    }
};

} // namespace

TEST_F(Expected, FilesAreTheSameToTheBit) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    for (const Stage& stage : stages) {
        Run(stage);
    }
    out_.ForgetExpectedOutputs();
    for (const Stage& stage : stages) {
        ExpectPlain(stage, samples_);
    }
}

TEST_F(Expected, WithoutHintsTheFilesAreTheSameToTheBit) {
    for (const Stage& stage : Stages()) {
        Run(stage);
        ExpectPlain(stage, samples_);
    }
}

TEST_F(Expected, NothingAppearsBeforeItsCreate) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    Run(stages[0]);
    EXPECT_EQ(QDir(QFileInfo(Path(stages[0].name)).path()).entryList(QDir::Files),
              QStringList{stages[0].name});
}

// The encoders are through with all of it by then, so that what they made is cut. The judges come after all:
// what starts a process leaves the thread sanitizer with a wrong picture of who has which file open.
TEST_F(Expected, PartOfTheSamplesMakesThePartialFile) {
    const std::vector<Stage> stages = Stages();
    const std::array<int, 4> parts = {1, 3, 5, 7}; // blocks
    for (const int blocks : parts) {
        Expect(stages);
        Run(stages.back());
        QThread::msleep(msUntilAllIsEncoded);
        for (size_t stage = 0; stage + 1 < stages.size(); ++stage) {
            Run(stages[stage], blocks);
            ASSERT_TRUE(QFile::rename(Path(stages[stage].name), PartPath(stages[stage], blocks)));
        }
    }
    for (const int blocks : parts) {
        for (size_t stage = 0; stage + 1 < stages.size(); ++stage) {
            ExpectPart(stages[stage], PartPath(stages[stage], blocks),
                       samples_.left(blocks * qint64{2} * rateHz));
        }
    }
}

TEST_F(Expected, PartialFirstFileDoesNotShortenTheNext) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    Run(stages[0], 2);
    Run(stages[1]);
    Run(stages[2]);
    ExpectPlain(stages[0], samples_.left(2 * qint64{2} * rateHz));
    ExpectPlain(stages[1], samples_);
    ExpectPlain(stages[2], samples_);
}

TEST_F(Expected, OtherSamplesMakeTheirOwnFile) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    Run(stages[0]);
    const QByteArray other = BytesOf(NoiseAndTones(frames, 2, rateHz, 10));
    folder_.Write(QStringLiteral("input.wav"), WaveFile({1, 2, rateHz, 16}, other));
    Run(stages[1]);
    Run(stages[2]);
    ExpectPlain(stages[1], other);
    ExpectPlain(stages[2], other);
}

TEST_F(Expected, FormatChangedMeanwhileCounts) {
    Expect({{QStringLiteral("a.wav"), [](CodecFile& file) { return file.SetFormatPCMFreq(44100, 2, 16); }},
            {QStringLiteral("a.mp3"), {}},
            {QStringLiteral("b.wav"), [](CodecFile& file) { return file.SetFormatADPCM(44100, 2); }}});
    const Stage first{QStringLiteral("a.wav"),
                      [](CodecFile& file) { return file.SetFormatPCMFreq(8000, 1, 8); }};
    const Stage second{QStringLiteral("a.mp3"),
                       [](CodecFile& file) { return file.SetFormatMP3(22050, 32, 1); }};
    const Stage third{QStringLiteral("b.wav"), [](CodecFile& file) { return file.SetFormatGSM(8000); }};
    for (const Stage& stage : {first, second, third}) {
        Run(stage);
        ExpectPlain(stage, samples_);
    }
}

TEST_F(Expected, OrderAndNamesNeedNotBeAsExpected) {
    const std::vector<Stage> stages = Stages();
    Expect({stages[1], stages[2], stages[3]});
    const Stage unexpected{QStringLiteral("z.wav"),
                           [](CodecFile& file) { return file.SetFormatPCMFreq(44100, 2, 24); }};
    for (const Stage& stage : {stages[3], unexpected, stages[2], stages[2], stages[1]}) {
        Run(stage);
        ExpectPlain(stage, samples_);
    }
}

TEST_F(Expected, NextExpectationsAreOfTheNextSamples) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    Run(stages[0]);
    Run(stages[1]);
    const QByteArray other = BytesOf(NoiseAndTones(frames / 2, 2, rateHz, 11));
    input_ = folder_.Write(QStringLiteral("other.wav"), WaveFile({1, 2, rateHz, 16}, other));
    Expect(stages);
    for (const Stage& stage : stages) {
        Run(stage);
    }
    for (const Stage& stage : stages) {
        ExpectPlain(stage, other);
    }
}

TEST_F(Expected, ExpectationsAfterTheStartAreOfTheFollowingFile) {
    const std::vector<Stage> stages = Stages();
    Expect({stages[0], stages[2]});
    Run(stages[0]);
    SetFormat(out_, stages[9]);
    out_.ExpectOutput(Path(stages[9].name));
    Run(stages[2]);
    Run(stages[9]);
    ExpectPlain(stages[2], samples_);
    ExpectPlain(stages[9], samples_);
}

TEST_F(Expected, ForgottenInTheMiddleOfAFileTheRestIsTheSame) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    SetFormat(out_, stages[0]);
    ASSERT_EQ(out_.Create(Path(stages[0].name)), Outcome::Ok);
    out_.SetSourceFormat(rateHz, 2);
    EXPECT_EQ(out_.WriteBlock(samples_.left(88200)), Outcome::Ok);
    out_.ForgetExpectedOutputs();
    EXPECT_EQ(out_.WriteBlock(samples_.mid(88200)), Outcome::Ok);
    EXPECT_EQ(out_.CloseFile(), Outcome::Ok);
    ExpectPlain(stages[0], samples_);
    Run(stages[2]);
    ExpectPlain(stages[2], samples_);
}

TEST_F(Expected, RefusedFirstFileLeavesTheExpectations) {
    const std::vector<Stage> stages = Stages();
    Expect(stages);
    SetFormat(out_, stages[0]);
    EXPECT_EQ(out_.Create(Path(QStringLiteral("none/a.wma"))), Outcome::WriteFailed);
    Run(stages[1]);
    Run(stages[2]);
    ExpectPlain(stages[1], samples_);
    ExpectPlain(stages[2], samples_);
}

TEST_F(Expected, ExistingTargetIsReplaced) {
    const std::vector<Stage> stages = Stages();
    folder_.Write(QStringLiteral("out/") + stages[2].name, "old");
    Expect({stages[0], stages[2]});
    Run(stages[0]);
    EXPECT_EQ(ReadWholeFile(Path(stages[2].name)), "old");
    Run(stages[2]);
    ExpectPlain(stages[2], samples_);
}

TEST_F(Expected, FullDiskIsToldAndKeepsAnExistingFile) {
    const std::vector<Stage> stages = Stages();
    const Stage& plain = stages.back();
    folder_.Write(QStringLiteral("out/") + plain.name, "old");
    Expect({stages[0], plain});
    Run(stages[0]);
    SetFormat(out_, plain);
    ASSERT_EQ(in_.OpenRead(input_), Outcome::Ok);
    {
        const SmallDisk disk;
        ASSERT_EQ(out_.Create(Path(plain.name)), Outcome::Ok);
        out_.SetSourceFormat(rateHz, 2);
        for (QByteArray block = in_.ReadBlock(88200); !block.isEmpty(); block = in_.ReadBlock(88200)) {
            out_.WriteBlock(block);
        }
        EXPECT_EQ(out_.CloseFile(), Outcome::WriteFailed);
    }
    EXPECT_EQ(ReadWholeFile(Path(plain.name)), "old");
}

TEST_F(Expected, FullDiskIsToldByEveryKind) {
    for (const bool wholeFiles : {false, true}) {
        for (const Stage& stage : Stages()) {
            CodecFile file;
            file.SetFlag(wholeFiles ? KSTAudioFile2::wholeFiles : 0);
            folder_.Write(QStringLiteral("out/") + stage.name, "old");
            SetFormat(file, stage);
            const SmallDisk disk;
            ASSERT_EQ(file.Create(Path(stage.name)), Outcome::Ok);
            file.SetSourceFormat(rateHz, 2);
            // Half a minute, of which every kind makes more than the disk holds.
            for (int part = 0; part < 8; ++part) {
                file.WriteBlock(samples_);
            }
            EXPECT_EQ(file.CloseFile(), Outcome::WriteFailed) << stage.name.toStdString();
            EXPECT_EQ(ReadWholeFile(Path(stage.name)), "old") << stage.name.toStdString();
        }
    }
}

TEST_F(Expected, InputMayBeAnOutput) {
    input_ = Path(QStringLiteral("a.wav"));
    folder_.Write(QStringLiteral("out/a.wav"), WaveFile({1, 2, rateHz, 16}, samples_));
    const Stage itself{QStringLiteral("a.wav"),
                       [](CodecFile& file) { return file.SetFormatPCMFreq(rateHz, 2, 16); }};
    const std::vector<Stage> stages = Stages();
    Expect({stages[2], itself, stages[9]});
    Run(stages[2]);
    Run(itself);
    Run(stages[9]);
    ExpectPlain(itself, samples_);
    ExpectPlain(stages[9], samples_);
}

TEST_F(Expected, WorkUnderWayIsLeftAtTheEnd) {
    auto file = std::make_unique<CodecFile>();
    file->SetFlag(KSTAudioFile2::wholeFiles);
    for (const Stage& stage : Stages()) {
        SetFormat(*file, stage);
        file->ExpectOutput(Path(stage.name));
    }
    ASSERT_EQ(file->SetFormatPCMFreq(rateHz, 2, 16), Outcome::Ok);
    ASSERT_EQ(file->Create(Path(QStringLiteral("first.wav"))), Outcome::Ok);
    file->SetSourceFormat(rateHz, 2);
    EXPECT_EQ(file->WriteBlock(samples_), Outcome::Ok);
    file.reset();
    CodecFile reader;
    ASSERT_EQ(reader.OpenRead(Path(QStringLiteral("first.wav"))), Outcome::Ok);
    EXPECT_EQ(ReadToEnd(reader), samples_);
}

namespace {

// A job begins on a thread of the pool; before that it is not taken.
std::optional<AheadOutput> TakeOnceBegun(AheadOutputs& ahead, EncodingPool& pool, const QString& path,
                                         const OutputFormat& format) {
    const EncodingJobPtr last = pool.AddInMemory(std::make_unique<EncodingPipeline>(MakeEncoder(format)));
    pool.End(last);
    EXPECT_EQ(pool.WaitForEnd(last), Outcome::Ok);
    return ahead.Take(path, format);
}

} // namespace

TEST(AheadOutputs, GivesUpWhatWouldTakeTooMuch) {
    EncodingPool pool(1);
    AheadOutputs ahead(pool, 1000000);
    const OutputFormat plain{FormatKind::Pcm, 8000, 1, 16, 0, RawPcm, 0};
    const OutputFormat small{FormatKind::G721, 8000, 1, 4, 0, RawPcm, 0};
    ahead.Expect(QStringLiteral("plain"), plain);
    ahead.Expect(QStringLiteral("small"), small);
    ahead.Start({8000, 1});
    const QByteArray block = BytesOf(NoiseAndTones(8000, 1, 8000, 1));
    // The samples and both files come to 2.25 times the samples, without the plain one to 1.25.
    for (int fed = 0; fed < 40; ++fed) {
        ahead.Feed(block);
    }
    ahead.EndFeed();
    EXPECT_FALSE(ahead.Take(QStringLiteral("plain"), plain).has_value());
    const std::optional<AheadOutput> kept = TakeOnceBegun(ahead, pool, QStringLiteral("small"), small);
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->blocks->size(), 40U);
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::ReadWrite));
    pool.MoveTo(kept->job, out);
    EXPECT_EQ(pool.WaitForEnd(kept->job), Outcome::Ok);
    EXPECT_EQ(out.size(), 40 * 4000);
}

TEST(AheadOutputs, GivesUpAllWhenTheSamplesAloneAreTooMuch) {
    EncodingPool pool(1);
    AheadOutputs ahead(pool, 100000);
    const OutputFormat small{FormatKind::G721, 8000, 1, 4, 0, RawPcm, 0};
    ahead.Expect(QStringLiteral("small"), small);
    ahead.Start({8000, 1});
    const QByteArray block = BytesOf(NoiseAndTones(8000, 1, 8000, 1));
    for (int fed = 0; fed < 40; ++fed) {
        ahead.Feed(block);
    }
    ahead.EndFeed();
    EXPECT_FALSE(ahead.Take(QStringLiteral("small"), small).has_value());
}

TEST(AheadOutputs, TakesOnlyTheFormatThatWasExpected) {
    EncodingPool pool(1);
    AheadOutputs ahead(pool, 1000000);
    const OutputFormat small{FormatKind::G721, 8000, 1, 4, 0, RawPcm, 0};
    OutputFormat other = small;
    other.rateHz = 11025;
    ahead.Expect(QStringLiteral("a"), small);
    ahead.Expect(QStringLiteral("b"), small);
    ahead.Expect(QStringLiteral("c"), small);
    EXPECT_TRUE(ahead.AnyExpected());
    ahead.Start({8000, 1});
    EXPECT_FALSE(ahead.AnyExpected());
    ahead.Feed(BytesOf({1, 2, 3}));
    ahead.EndFeed();
    EXPECT_FALSE(ahead.Take(QStringLiteral("a"), other).has_value());
    EXPECT_FALSE(ahead.Take(QStringLiteral("a"), small).has_value());
    EXPECT_FALSE(ahead.Take(QStringLiteral("d"), small).has_value());
    std::optional<AheadOutput> taken = TakeOnceBegun(ahead, pool, QStringLiteral("c"), small);
    ASSERT_TRUE(taken.has_value());
    ahead.Forget();
    EXPECT_EQ(pool.WaitForEnd(taken->job), Outcome::Ok);
    EXPECT_FALSE(ahead.Take(QStringLiteral("b"), small).has_value());
}

} // namespace kestrune
