// The SetFormat calls of an audio file.
#include "backends/audio_file/codec_file.h"

#include "backends/encoders/mp2_encoder.h"
#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/truespeech_encoder.h"
#include "backends/encoders/vorbis_encoder.h"
#include "backends/encoders/wave_template.h"
#include "backends/encoders/wma_encoder.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

template <size_t Count>
bool IsOneOf(const std::array<qint32, Count>& values, qint32 value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

// As far as rates of headerless files are taken for reading.
bool IsRate(qint32 frequency) {
    constexpr qint32 highestHz = 1000000;
    return frequency > 0 && frequency <= highestHz;
}

bool IsMonoOrStereo(qint32 channels) {
    return channels == 1 || channels == 2;
}

} // namespace

Outcome CodecFile::Choose(const OutputFormat& format, bool valid) {
    format_ = valid ? format : OutputFormat();
    return valid ? Outcome::Ok : Outcome::NotSupported;
}

Outcome CodecFile::ChooseKept(const std::optional<OutputFormat>& format, std::optional<OutputFormat>& kept) {
    if (format) {
        kept = format;
    }
    return Choose(format.value_or(OutputFormat()), format.has_value());
}

Outcome CodecFile::SetFormatFromFile(const QString& file) {
    format_ = {};
    QFile wave(file);
    if (!wave.open(QIODevice::ReadOnly)) {
        return Outcome::NotFound;
    }
    OutputFormat format;
    const Outcome outcome = ReadTemplateFormat(wave, format);
    if (outcome == Outcome::Ok) {
        format_ = format;
    }
    return outcome;
}

Outcome CodecFile::SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) {
    const bool valid = IsRate(frequency) && IsMonoOrStereo(channels) && IsOneOf<4>({8, 16, 24, 32}, bits);
    return Choose({FormatKind::Pcm, frequency, channels, bits, 0, RawPcm, 0}, valid);
}

Outcome CodecFile::SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) {
    const bool companded = type == RawALaw || type == RawMuLaw;
    // Companded samples have 8 bits, whatever the caller says.
    const qint32 storedBits = companded ? 8 : bits;
    const bool valid = (companded || type == RawPcm) && IsRate(frequency) && IsMonoOrStereo(channels) &&
                       IsOneOf<4>({8, 16, 24, 32}, storedBits);
    headerless_.raw = {FormatKind::Raw, frequency, channels, storedBits, 0, type, 0};
    return Choose(headerless_.raw, valid);
}

Outcome CodecFile::SetFormatADPCM(qint32 frequency, qint32 channels) {
    const OutputFormat format{FormatKind::ImaAdpcm, frequency, channels, 4, 0, RawPcm, 0};
    headerless_.adpcm = format;
    // Headerless data of the coding has one channel.
    headerless_.adpcm.channels = 1;
    return Choose(format, IsRate(frequency) && IsMonoOrStereo(channels));
}

Outcome CodecFile::SetFormatGSM(qint32 frequency) {
    headerless_.gsm = {FormatKind::Gsm, frequency, 1, 0, 0, RawPcm, 0};
    return Choose(headerless_.gsm, IsRate(frequency));
}

Outcome CodecFile::SetFormatVOX(qint32 frequency) {
    headerless_.vox = {FormatKind::Vox, frequency, 1, 4, 0, RawPcm, 0};
    return Choose(headerless_.vox, IsRate(frequency));
}

Outcome CodecFile::SetFormatDSP() {
    return Choose(TrueSpeechFormat(), true);
}

Outcome CodecFile::SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) {
    return ChooseKept(Mp2Format(frequency, bitrateKbps, channels), mp2_);
}

Outcome CodecFile::SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) {
    constexpr qint32 monoMode = 0;
    // What LAME takes on its own: the two channels share their bits, which is nearer to the sound nearly
    // always.
    constexpr qint32 jointStereoMode = 2;
    Mp3Options options;
    options.frequency = frequency;
    options.bitrate = bitrateKbps;
    options.channels = channels;
    options.channelMode = channels == 1 ? monoMode : jointStereoMode;
    return SetFormatMP3Options(options);
}

Outcome CodecFile::SetFormatMP3Options(const Mp3Options& options) {
    return ChooseKept(Mp3Format(options), mp3_);
}

Outcome CodecFile::SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                      qint32 minimumKbps, qint32 maximumKbps, qint32 quality) {
    return ChooseKept(VorbisFormat(frequency, channels, {nominalKbps, minimumKbps, maximumKbps, quality}),
                      vorbis_);
}

bool CodecFile::IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                           qint32 minimumKbps, qint32 maximumKbps) {
    constexpr qint32 byRates = -1;
    return VorbisFormat(frequency, channels, {nominalKbps, minimumKbps, maximumKbps, byRates}).has_value();
}

Outcome CodecFile::SetFormatWMA(qint32 profile) {
    const std::optional<OutputFormat> format = WmaFormat(profile);
    return Choose(format.value_or(OutputFormat()), format.has_value());
}

Outcome CodecFile::SetFormatG721(qint32 frequency) {
    headerless_.g721 = {FormatKind::G721, frequency, 1, 4, 0, RawPcm, 0};
    return Choose(headerless_.g721, IsRate(frequency));
}

Outcome CodecFile::SetFormatG723(qint32 frequency, qint32 bits) {
    headerless_.g723 = {FormatKind::G723, frequency, 1, bits, 0, RawPcm, 0};
    return Choose(headerless_.g723, IsRate(frequency) && (bits == 3 || bits == 5));
}

Outcome CodecFile::SetFormatG726(qint32 frequency, qint32 bits) {
    headerless_.g726 = {FormatKind::G726, frequency, 1, bits, 0, RawPcm, 0};
    return Choose(headerless_.g726, IsRate(frequency) && bits >= 2 && bits <= 5);
}

std::optional<OutputFormat> CodecFile::FormatFor(const QString& file) const {
    const QString extension = QFileInfo(file).suffix().toLower();
    if (extension == QLatin1String("mp3")) {
        return mp3_ ? mp3_ : Mp3Format({});
    }
    if (extension == QLatin1String("mp2")) {
        constexpr qint32 rateHz = 44100;
        constexpr qint32 bitrateKbps = 192;
        constexpr qint32 stereo = 2;
        return mp2_ ? mp2_ : Mp2Format(rateHz, bitrateKbps, stereo);
    }
    if (extension == QLatin1String("ogg")) {
        constexpr qint32 rateHz = 44100;
        constexpr qint32 stereo = 2;
        return vorbis_ ? vorbis_ : VorbisFormat(rateHz, stereo, {});
    }
    return format_.kind == FormatKind::None ? std::nullopt : std::optional(format_);
}

Outcome CodecFile::SelectFormat() {
    return Outcome::NotSupported;
}

void CodecFile::HoldInputFormats(bool hold) {
    if (!hold) {
        heldHeaderless_.reset();
    } else if (!heldHeaderless_) {
        heldHeaderless_ = headerless_;
    }
}

void CodecFile::SetBlockOption(qint32 /*option*/, qint32 /*value*/) {}

} // namespace kestrune
