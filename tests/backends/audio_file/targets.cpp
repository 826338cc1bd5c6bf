#include "backends/audio_file/targets.h"

#include "backends/audio_file/codec_file.h"
#include "support/test_files.h"

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr int lowestMp2Hz = 16000;

SoundShape AsWanted(const SoundShape& wanted) {
    return wanted;
}

SoundShape Mono(const SoundShape& wanted) {
    return {wanted.rateHz, 1};
}

// kbit/s of the lossy kinds that suit the shape.
int Kbps(const SoundShape& shape) {
    constexpr int lowRateHz = 16000;
    return shape.rateHz <= lowRateHz ? 32 * shape.channels : 64 * shape.channels;
}

QStringList SoxType(const char* type, const SoundShape& shape) {
    return {QStringLiteral("-t"),          QLatin1String(type),  QStringLiteral("-r"),
            QString::number(shape.rateHz), QStringLiteral("-c"), QString::number(shape.channels)};
}

std::vector<qint16> BySox(const QString& file, const SoundShape& /*shape*/) {
    return DecodedBySox(file);
}

std::vector<qint16> ByFfmpeg(const QString& file, const SoundShape& /*shape*/) {
    return DecodedByFfmpeg(file);
}

std::vector<qint16> G726ByFfmpeg(const QString& file, const SoundShape& shape) {
    return DecodedByFfmpeg(file, {QStringLiteral("-f"), QStringLiteral("g726"), QStringLiteral("-code_size"),
                                  QStringLiteral("4"), QStringLiteral("-ar"), QString::number(shape.rateHz)});
}

// No packaged program decodes what others write of the coding at 5 bits.
std::vector<qint16> G723ByTheReader(const QString& file, const SoundShape& shape) {
    CodecFile reader;
    reader.SetFormatG723(shape.rateHz, 5);
    reader.OpenRead(file);
    const QByteArray bytes = ReadToEnd(reader);
    std::vector<qint16> samples(static_cast<size_t>(bytes.size()) / sizeof(qint16));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(qint16));
    return samples;
}

std::vector<Target> MusicTargets() {
    return {
        {QStringLiteral("_39.wma"), [](auto& file, const SoundShape&) { return file.SetFormatWMA(39); },
         [](const SoundShape&) {
             return SoundShape{44100, 2};
         },
         QStringLiteral("wmav2"), ByFfmpeg, 4096, 4096, 42.0},
        {QStringLiteral(".mp3"),
         [](auto& file, const SoundShape& s) { return file.SetFormatMP3(s.rateHz, Kbps(s), s.channels); },
         AsWanted, QStringLiteral("mp3"),
         [](const QString& file, const SoundShape&) { return DecodedByLame(file); }, 1152, 1200, 15.0, 0.93},
        {QStringLiteral(".mp2"),
         [](auto& file, const SoundShape& s) {
             return file.SetFormatMP2(std::max(s.rateHz, lowestMp2Hz), 96 * s.channels, s.channels);
         },
         [](const SoundShape& s) {
             return SoundShape{std::max(s.rateHz, lowestMp2Hz), s.channels};
         },
         QStringLiteral("mp2"), ByFfmpeg, 1152, 1200, 33.0},
        {QStringLiteral(".ogg"),
         [](auto& file, const SoundShape& s) {
             return file.SetFormatOggVorbis(s.rateHz, s.channels, Kbps(s), 0, 0, -1);
         },
         AsWanted, QStringLiteral("vorbis"),
         [](const QString& file, const SoundShape&) { return DecodedByOggdec(file); }, 1, 8, 20.0},
        {QStringLiteral("_ADPCM.wav"),
         [](auto& file, const SoundShape& s) { return file.SetFormatADPCM(s.rateHz, s.channels); }, AsWanted,
         QStringLiteral("adpcm_ima_wav"), BySox, 2041, 8, 21.0},
        {QStringLiteral("_ULAW.raw"),
         [](auto& file, const SoundShape& s) { return file.SetFormatRaw(RawALaw, s.rateHz, s.channels, 16); },
         AsWanted, QString(),
         [](const QString& file, const SoundShape& s) { return DecodedBySox(file, SoxType("al", s)); }, 1, 8,
         35.0},
    };
}

std::vector<Target> SpeechTargets() {
    return {
        {QStringLiteral("_DSP.wav"), [](auto& file, const SoundShape&) { return file.SetFormatDSP(); },
         [](const SoundShape&) {
             return SoundShape{8000, 1};
         },
         QStringLiteral("truespeech"), ByFfmpeg, 240, 480, 6.0, 0.8},
        {QStringLiteral(".vox"), [](auto& file, const SoundShape& s) { return file.SetFormatVOX(s.rateHz); },
         Mono, QString(),
         [](const QString& file, const SoundShape& s) { return DecodedBySox(file, SoxType("vox", s)); }, 2, 8,
         21.0},
        {QStringLiteral("_GSM.wav"),
         [](auto& file, const SoundShape& s) { return file.SetFormatGSM(s.rateHz); }, Mono,
         QStringLiteral("gsm_ms"), BySox, 320, 40, 7.0, 0.8},
        {QStringLiteral(".g726"),
         [](auto& file, const SoundShape& s) { return file.SetFormatG726(s.rateHz, 4); }, Mono, QString(),
         G726ByFfmpeg, 2, 8, 23.0},
        {QStringLiteral(".g723"),
         [](auto& file, const SoundShape& s) { return file.SetFormatG723(s.rateHz, 5); }, Mono, QString(),
         G723ByTheReader, 8, 8, 29.0},
        {QStringLiteral(".g721"),
         [](auto& file, const SoundShape& s) { return file.SetFormatG721(s.rateHz); }, Mono, QString(),
         G726ByFfmpeg, 2, 8, 23.0},
    };
}

} // namespace

std::vector<Target> ConverterTargets() {
    std::vector<Target> targets = MusicTargets();
    for (Target& target : SpeechTargets()) {
        targets.push_back(std::move(target));
    }
    return targets;
}

Outcome ConvertFile(KSTAudioFile2& input, KSTAudioFile2& output, const QString& source,
                    const QString& target) {
    Outcome outcome = input.OpenRead(source, 0, 1);
    if (outcome != Outcome::Ok) {
        return outcome;
    }
    outcome = output.Create(target, 0);
    if (outcome == Outcome::Ok) {
        output.SetSourceFormat(input.GetWaveFormat(), input.GetChannels());
        const qint64 blockBytes = static_cast<qint64>(input.GetChannels()) * input.GetWaveFormat();
        QByteArray block = input.ReadBlock(blockBytes);
        while (!block.isEmpty() && outcome == Outcome::Ok) {
            outcome = output.WriteBlock(block);
            block = input.ReadBlock(blockBytes);
        }
        const Outcome closed = output.CloseFile();
        outcome = outcome == Outcome::Ok ? closed : outcome;
    }
    input.CloseFile();
    return outcome;
}

} // namespace kestrune
