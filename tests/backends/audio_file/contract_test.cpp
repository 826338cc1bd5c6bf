#include "support/audio_file_contract.h"

#include "backends/audio_file/codec_file.h"
#include "support/fake_audio_file.h"
#include "support/test_files.h"

namespace kestrune {

namespace {

constexpr int goodFrames = 5003;

QByteArray GoodPcm() {
    return BytesOf(NoiseAndTones(goodFrames, 2, 8000, 3));
}

class FakeSubject : public AudioFileSubject {
public:
    FakeSubject() {
        fake_.files[GoodPath()] = {GoodPcm(), 8000, 2, QStringLiteral("PCM, 8,000 Hz"), 1};
        fake_.files[UnreadablePath()] = {{}, 0, 0, {}, -1};
        fake_.refusedTargets.insert(RefusedPath());
    }
    KSTAudioFile2& File() override { return fake_; }
    QString GoodPath() const override { return QStringLiteral("/music/good.wav"); }
    QByteArray GoodSamples() const override { return GoodPcm(); }
    QString MissingPath() const override { return QStringLiteral("/music/none.wav"); }
    QString UnreadablePath() const override { return QStringLiteral("/music/text.wav"); }
    QString TargetPath() const override { return QStringLiteral("/music/new.wav"); }
    QString RefusedPath() const override { return QStringLiteral("/none/new.wav"); }
    QByteArray WrittenSamples(const QString& path) override { return fake_.written.value(path); }

private:
    FakeAudioFile fake_;
};

class CodecSubject : public AudioFileSubject {
public:
    CodecSubject() : file_(MakeAudioFile()) {
        folder_.Write(QStringLiteral("good.wav"), WaveFile({1, 2, 8000, 16}, GoodPcm()));
        folder_.Write(QStringLiteral("text.wav"), "This is no audio.\n");
    }
    KSTAudioFile2& File() override { return *file_; }
    QString GoodPath() const override { return folder_.Path(QStringLiteral("good.wav")); }
    QByteArray GoodSamples() const override { return GoodPcm(); }
    QString MissingPath() const override { return folder_.Path(QStringLiteral("none.wav")); }
    QString UnreadablePath() const override { return folder_.Path(QStringLiteral("text.wav")); }
    QString TargetPath() const override { return folder_.Path(QStringLiteral("new.wav")); }
    QString RefusedPath() const override { return folder_.Path(QStringLiteral("none/new.wav")); }
    QByteArray WrittenSamples(const QString& path) override {
        CodecFile reader;
        EXPECT_EQ(reader.OpenRead(path), Outcome::Ok);
        return ReadToEnd(reader);
    }

private:
    TestFolder folder_;
    std::unique_ptr<KSTAudioFile2> file_;
};

template <typename Subject>
AudioFileMaker MakerOf(const char* name) {
    return {name, [] { return std::make_unique<Subject>(); }};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Everywhere, AudioFileContract,
                         testing::Values(MakerOf<FakeSubject>("Fake"), MakerOf<CodecSubject>("Codec")),
                         [](const auto& tested) { return tested.param.name; });

TEST(FakeAudioFile, LogsCallsAndKeepsWhatIsWritten) {
    FakeAudioFile fake;
    fake.refusedTargets.insert(QStringLiteral("/full/a.mp3"));
    fake.refusedFormats.insert(QStringLiteral("SetFormatOggVorbis"));
    EXPECT_EQ(fake.SetFormatMP3(44100, 128, 2), Outcome::Ok);
    EXPECT_EQ(fake.Create(QStringLiteral("/full/a.mp3")), Outcome::WriteFailed);
    EXPECT_LT(fake.GetFormatId(), 0);
    EXPECT_EQ(fake.Create(QStringLiteral("/out/a.mp3")), Outcome::Ok);
    EXPECT_EQ(fake.WriteBlock("abcd"), Outcome::Ok);
    EXPECT_EQ(fake.WriteBlock("efgh"), Outcome::Ok);
    EXPECT_EQ(fake.CloseFile(), Outcome::Ok);
    EXPECT_EQ(fake.WriteBlock("late"), Outcome::NotOpen);
    EXPECT_EQ(fake.SetFormatOggVorbis(44100, 2, 128, 0, 0, -1), Outcome::NotSupported);
    EXPECT_TRUE(fake.GetFormatText().isEmpty());
    EXPECT_EQ(fake.written.value(QStringLiteral("/out/a.mp3")), "abcdefgh");
    const QStringList expected = {QStringLiteral("SetFormatMP3 44100 128 2"),
                                  QStringLiteral("Create /full/a.mp3"),
                                  QStringLiteral("Create /out/a.mp3"),
                                  QStringLiteral("WriteBlock 4"),
                                  QStringLiteral("WriteBlock 4"),
                                  QStringLiteral("CloseFile"),
                                  QStringLiteral("WriteBlock 4"),
                                  QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 -1")};
    EXPECT_EQ(fake.calls, expected);
}

} // namespace kestrune
