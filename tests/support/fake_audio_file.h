// A KSTAudioFile2 over files that a test keeps in memory. It logs what it is asked.
#pragma once

#include "components/audio_file.h"
#include "components/pcm.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace kestrune {

class FakeAudioFile : public KSTAudioFile2 {
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
    QSet<QString> refusedFormats;  // SetFormat calls that answer NotSupported, e.g. "SetFormatOggVorbis"
    bool writesFail = false;       // WriteBlock answers WriteFailed and keeps nothing

    // What the test looks at.
    QStringList calls;                  // "OpenRead /a/b.wav", "SeekTo 1234", "SetFormatMP3 44100 128 2", ...
    QHash<QString, QByteArray> written; // path -> samples given to WriteBlock since Create
    Mp3Options lastMp3Options;          // of the last SetFormatMP3Options

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
        return mode_ == Mode::Reading ? input_.formatText : outputText_;
    }
    qint32 BlockDivisor() const override { return 1; }
    qint32 GetFormatBits() const override { return bits_; }
    qint32 GetRawType() const override { return rawType_; }

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

    Outcome SetFormatFromFile(const QString& file) override {
        return Set(QStringLiteral("SetFormatFromFile"), {file});
    }
    Outcome SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) override {
        return Set(QStringLiteral("SetFormatPCMFreq"), Texts({frequency, channels, bits}), bits);
    }
    Outcome SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) override {
        rawType_ = type;
        return Set(QStringLiteral("SetFormatRaw"), Texts({type, frequency, channels, bits}), bits);
    }
    Outcome SetFormatADPCM(qint32 frequency, qint32 channels) override {
        return Set(QStringLiteral("SetFormatADPCM"), Texts({frequency, channels}), 4);
    }
    Outcome SetFormatGSM(qint32 frequency) override {
        return Set(QStringLiteral("SetFormatGSM"), Texts({frequency}));
    }
    Outcome SetFormatVOX(qint32 frequency) override {
        return Set(QStringLiteral("SetFormatVOX"), Texts({frequency}), 4);
    }
    Outcome SetFormatDSP() override { return Set(QStringLiteral("SetFormatDSP"), {}); }
    Outcome SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) override {
        return Set(QStringLiteral("SetFormatMP2"), Texts({frequency, bitrateKbps, channels}));
    }
    Outcome SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) override {
        return Set(QStringLiteral("SetFormatMP3"), Texts({frequency, bitrateKbps, channels}));
    }
    Outcome SetFormatMP3Options(const Mp3Options& options) override {
        lastMp3Options = options;
        return Set(QStringLiteral("SetFormatMP3Options"),
                   Texts({options.frequency, options.bitrate, options.channels}));
    }
    Outcome SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps, qint32 minimumKbps,
                               qint32 maximumKbps, qint32 quality) override {
        return Set(QStringLiteral("SetFormatOggVorbis"),
                   Texts({frequency, channels, nominalKbps, minimumKbps, maximumKbps, quality}));
    }
    bool IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps, qint32 minimumKbps,
                                    qint32 maximumKbps) override {
        const QString name = QStringLiteral("IsAvailableFormatOggVorbis");
        const QStringList arguments = Texts({frequency, channels, nominalKbps, minimumKbps, maximumKbps});
        calls << QStringList(name + QChar(' ') + arguments.join(QChar(' ')));
        return !refusedFormats.contains(name);
    }
    Outcome SetFormatWMA(qint32 profile) override {
        return Set(QStringLiteral("SetFormatWMA"), Texts({profile}));
    }
    Outcome SetFormatG721(qint32 frequency) override {
        return Set(QStringLiteral("SetFormatG721"), Texts({frequency}), 4);
    }
    Outcome SetFormatG723(qint32 frequency, qint32 bits) override {
        return Set(QStringLiteral("SetFormatG723"), Texts({frequency, bits}), bits);
    }
    Outcome SetFormatG726(qint32 frequency, qint32 bits) override {
        return Set(QStringLiteral("SetFormatG726"), Texts({frequency, bits}), bits);
    }
    Outcome SelectFormat() override {
        calls << QStringLiteral("SelectFormat");
        return Outcome::NotSupported;
    }
    void SetBlockOption(qint32 option, qint32 value) override {
        calls << QStringLiteral("SetBlockOption %1 %2").arg(option).arg(value);
    }
    void SetFlag(qint32 value) override { calls << QStringLiteral("SetFlag %1").arg(value); }
    void HoldInputFormats(bool hold) override {
        calls << QStringLiteral("HoldInputFormats %1").arg(hold ? 1 : 0);
    }

private:
    enum class Mode { Closed, Reading, Writing };

    static QStringList Texts(std::initializer_list<qint32> values) {
        QStringList texts;
        for (const qint32 value : values) {
            texts << QString::number(value);
        }
        return texts;
    }

    Outcome Set(const QString& name, const QStringList& arguments, qint32 bits = 16) {
        const QString call = (QStringList(name) + arguments).join(QChar(' '));
        calls << call;
        const bool refused = refusedFormats.contains(name);
        outputText_ = refused ? QString() : call;
        bits_ = bits;
        return refused ? Outcome::NotSupported : Outcome::Ok;
    }

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
    QString outputText_;
    qint64 position_ = 0;
    qint32 bits_ = 16;
    qint32 rawType_ = RawPcm;
    qint32 sourceRateHz_ = 0;
    qint32 sourceChannels_ = 0;
};

} // namespace kestrune
