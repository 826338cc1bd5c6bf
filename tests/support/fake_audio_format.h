// An AudioFormat that takes every format but those that the test refuses. It logs what it is asked.
#pragma once

#include "components/audio_format.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace kestrune {

class FakeAudioFormat : public virtual AudioFormat {
public:
    QSet<QString> refusedFormats; // SetFormat calls that answer NotSupported, e.g. "SetFormatOggVorbis"

    // What the test looks at.
    QStringList calls;         // "SetFormatMP3 44100 128 2", ...
    Mp3Options lastMp3Options; // of the last SetFormatMP3Options

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

    // The last SetFormat call as `calls` has it.
    QString GetFormatText() const override { return outputText_; }
    qint32 GetFormatBits() const override { return bits_; }
    qint32 GetRawType() const override { return rawType_; }

private:
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

    QString outputText_;
    qint32 bits_ = 16;
    qint32 rawType_ = RawPcm;
};

} // namespace kestrune
