// A KSTAudioFile2 over files that a test keeps in memory. It logs what it is asked in `calls`: "OpenRead
// /a/b.wav", "SeekTo 1234".
#pragma once

#include "components/audio_file.h"
#include "components/pcm.h"
#include "support/fake_audio_format.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

#include <algorithm>

namespace kestrune {

class FakeAudioFile : public KSTAudioFile2, public FakeAudioFormat {
public:
    // A negative formatId makes a file that exists but cannot be decoded.
    struct Content {
        QByteArray pcm; // interleaved 16-bit samples
        int rateHz = 44100;
        int channels = 2;
        QString formatText;
        qint32 formatId = 1;
    };

    // What the test sets up.
    QHash<QString, Content> files; // path -> what OpenRead finds there
    QSet<QString> refusedTargets;  // paths that Create fails on
    bool writesFail = false;       // WriteBlock answers WriteFailed and keeps nothing

    // What the test looks at.
    QHash<QString, QByteArray> written; // path -> samples given to WriteBlock since Create

    Outcome OpenRead(const QString& file, qint32 /*first*/ = 0, qint32 /*second*/ = 1) override {
        calls << QStringLiteral("OpenRead %1").arg(file);
        Forget();
        const auto found = files.constFind(file);
        if (found == files.constEnd()) {
            return Outcome::NotFound;
        }
        if (found->formatId < 0) {
            return Outcome::NotDecodable;
        }
        input_ = *found;
        mode_ = Mode::Reading;
        return Outcome::Ok;
    }

    Outcome CloseFile() override {
        calls << QStringLiteral("CloseFile");
        const bool wasOpen = mode_ != Mode::Closed;
        Forget();
        return wasOpen ? Outcome::Ok : Outcome::NotOpen;
    }

    QByteArray ReadBlock(qint64 size) override {
        calls << QStringLiteral("ReadBlock %1").arg(size);
        if (mode_ != Mode::Reading || size <= 0) {
            return {};
        }
        const qint64 wholeBytes = std::min(size, WholeLength() - position_) / Frame() * Frame();
        const QByteArray block = input_.pcm.mid(position_, wholeBytes);
        position_ += block.size();
        return block;
    }

    qint64 SeekTo(qint64 position, qint32 /*whence*/ = 3) override {
        calls << QStringLiteral("SeekTo %1").arg(position);
        if (mode_ != Mode::Reading) {
            return -1;
        }
        position_ = std::clamp<qint64>(position, 0, WholeLength()) / Frame() * Frame();
        return position_;
    }

    qint32 GetFormatId() const override {
        switch (mode_) {
        case Mode::Reading:
            return input_.formatId;
        case Mode::Writing:
            return 1;
        case Mode::Closed:
            break;
        }
        return -1;
    }
    qint64 GetLengthBytes() override { return mode_ == Mode::Reading ? WholeLength() : 0; }
    qint64 GetLengthMs() override { return pcmMsForBytes(GetLengthBytes(), GetWaveFormat(), GetChannels()); }
    qint32 GetChannels() const override { return mode_ == Mode::Reading ? input_.channels : sourceChannels_; }
    qint32 GetWaveFormat() const override { return mode_ == Mode::Reading ? input_.rateHz : sourceRateHz_; }
    // While reading, the text of the content; otherwise the last SetFormat call as `calls` has it.
    QString GetFormatText() const override {
        return mode_ == Mode::Reading ? input_.formatText : FakeAudioFormat::GetFormatText();
    }
    qint32 BlockDivisor() const override { return 1; }

    Outcome Create(const QString& file, qint32 /*first*/ = 0) override {
        calls << QStringLiteral("Create %1").arg(file);
        Forget();
        if (refusedTargets.contains(file)) {
            return Outcome::WriteFailed;
        }
        target_ = file;
        written[file].clear();
        mode_ = Mode::Writing;
        return Outcome::Ok;
    }
    void SetSourceFormat(qint32 waveFormat, qint32 channels) override {
        calls << QStringLiteral("SetSourceFormat %1 %2").arg(waveFormat).arg(channels);
        sourceRateHz_ = waveFormat;
        sourceChannels_ = channels;
    }
    Outcome WriteBlock(const QByteArray& block) override {
        calls << QStringLiteral("WriteBlock %1").arg(block.size());
        if (mode_ != Mode::Writing) {
            return Outcome::NotOpen;
        }
        if (writesFail) {
            return Outcome::WriteFailed;
        }
        written[target_] += block;
        return Outcome::Ok;
    }

    void ExpectOutput(const QString& file) override { calls << QStringLiteral("ExpectOutput %1").arg(file); }
    void ForgetExpectedOutputs() override { calls << QStringLiteral("ForgetExpectedOutputs"); }

    void SetBlockOption(qint32 option, qint32 value) override {
        calls << QStringLiteral("SetBlockOption %1 %2").arg(option).arg(value);
    }
    void SetFlag(qint32 value) override { calls << QStringLiteral("SetFlag %1").arg(value); }
    void HoldInputFormats(bool hold) override {
        calls << QStringLiteral("HoldInputFormats %1").arg(hold ? 1 : 0);
    }

private:
    enum class Mode { Closed, Reading, Writing };

    void Forget() {
        mode_ = Mode::Closed;
        input_ = {};
        target_.clear();
        position_ = 0;
    }

    qint64 Frame() const { return frameBytes(std::max(input_.channels, 1)); }
    qint64 WholeLength() const { return input_.pcm.size() / Frame() * Frame(); }

    Mode mode_ = Mode::Closed;
    Content input_;
    QString target_;
    qint64 position_ = 0;
    qint32 sourceRateHz_ = 0;
    qint32 sourceChannels_ = 0;
};

} // namespace kestrune
