#include "support/audio_information_contract.h"

#include "backends/tags/made_files.h"
#include "backends/tags/tag_information.h"
#include "support/fake_audio_information.h"

namespace kestrune {

namespace {

class FakeSubject : public AudioInformationSubject {
public:
    FakeSubject() {
        FakeAudioInformation::Probe good;
        good.bitrateBps = 128000;
        good.durationMs = 3000;
        good.formatString = QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
        good.title = QStringLiteral("Song");
        good.artist = QStringLiteral("Band");
        good.fileSizeBytes = 48000;
        FakeAudioInformation::Probe broken;
        broken.valid = false;
        fake_.files = {{GoodPath(), good}, {BrokenPath(), broken}, {ChangeablePath(), good}};
    }
    KSTAudioInformation2& Information() override { return fake_; }
    QString GoodPath() const override { return QStringLiteral("/good.mp3"); }
    QString MissingPath() const override { return QStringLiteral("/missing.mp3"); }
    QString BrokenPath() const override { return QStringLiteral("/broken.mp3"); }
    QString ChangeablePath() override { return QStringLiteral("/changeable.wav"); }

private:
    FakeAudioInformation fake_;
};

class FileSubject : public AudioInformationSubject {
public:
    explicit FileSubject(std::shared_ptr<MadeFiles> made) : made_(std::move(made)) {
        made_->Encode(
            QStringLiteral("good.wav"),
            QStringLiteral("-t 1 -metadata title=Song -metadata artist=Band").split(QLatin1Char(' ')));
        made_->Write(QStringLiteral("broken.mp3"), QByteArray("no sound in here\n").repeated(500));
    }
    KSTAudioInformation2& Information() override { return *information_; }
    QString GoodPath() const override { return made_->Path(QStringLiteral("good.wav")); }
    QString MissingPath() const override { return made_->Path(QStringLiteral("missing.wav")); }
    QString BrokenPath() const override { return made_->Path(QStringLiteral("broken.mp3")); }
    QString ChangeablePath() override {
        return made_->Write(QStringLiteral("changeable.wav"), ContentOf(GoodPath()));
    }

private:
    std::shared_ptr<MadeFiles> made_; // of all subjects, since making them takes long
    std::unique_ptr<KSTAudioInformation2> information_ = MakeAudioInformation();
};

AudioInformationMaker MakerOfFiles() {
    return {"Files", [made = std::make_shared<MadeFiles>()] { return std::make_unique<FileSubject>(made); }};
}

INSTANTIATE_TEST_SUITE_P(
    Both, AudioInformationContract,
    testing::Values(AudioInformationMaker{"Fake", [] { return std::make_unique<FakeSubject>(); }},
                    MakerOfFiles()),
    [](const testing::TestParamInfo<AudioInformationMaker>& maker) { return maker.param.name; });

} // namespace

} // namespace kestrune
