// The SetFormat calls of an audio file.
#include "backends/codecs/codec_file.h"
#include "backends/codecs/wave_header.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr int speechRateHz = 8000;
constexpr int trueSpeechBps = 8500;
constexpr int bitsPerKbit = 1000;

template <size_t Count>
bool IsOneOf(const std::array<qint32, Count>& values, qint32 value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool IsMonoOrStereo(qint32 channels) {
    return channels == 1 || channels == 2;
}

} // namespace

Outcome CodecFile::Choose(const OutputFormat& format, bool valid) {
    format_ = valid ? format : OutputFormat();
    return valid ? Outcome::Ok : Outcome::NotSupported;
}

Outcome CodecFile::SetFormatFromFile(const QString& file) {
    QFile wave(file);
    if (!wave.open(QIODevice::ReadOnly)) {
        format_ = {};
        return Outcome::NotFound;
    }
    const std::optional<WaveHeader> header = ReadWaveHeader(wave);
    if (!header) {
        format_ = {};
        return Outcome::NotDecodable;
    }
    OutputFormat format;
    format.kind = FormatKind::Template;
    format.rateHz = header->rateHz;
    format.channels = header->channels;
    format.bits = header->bits;
    format.bitrateBps = static_cast<int>(std::min<qint64>(header->bytesPerSecond * 8LL, INT32_MAX));
    format.waveTag = header->tag;
    return Choose(format, true);
}

Outcome CodecFile::SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) {
    const bool valid = frequency > 0 && IsMonoOrStereo(channels) && IsOneOf<4>({8, 16, 24, 32}, bits);
    return Choose({FormatKind::Pcm, frequency, channels, bits, 0, RawPcm, 0}, valid);
}

Outcome CodecFile::SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) {
    const bool companded = type == RawALaw || type == RawMuLaw;
    // Companded samples have 8 bits, whatever the caller says.
    const qint32 storedBits = companded ? 8 : bits;
    const bool valid = (companded || type == RawPcm) && frequency > 0 && IsMonoOrStereo(channels) &&
                       IsOneOf<4>({8, 16, 24, 32}, storedBits);
    headerless_.raw = {FormatKind::Raw, frequency, channels, storedBits, 0, type, 0};
    return Choose(headerless_.raw, valid);
}

Outcome CodecFile::SetFormatADPCM(qint32 frequency, qint32 channels) {
    const OutputFormat format{FormatKind::ImaAdpcm, frequency, channels, 4, 0, RawPcm, 0};
    headerless_.adpcm = format;
    // Headerless data of the coding has one channel.
    headerless_.adpcm.channels = 1;
    return Choose(format, frequency > 0 && IsMonoOrStereo(channels));
}

Outcome CodecFile::SetFormatGSM(qint32 frequency) {
    headerless_.gsm = {FormatKind::Gsm, frequency, 1, 0, 0, RawPcm, 0};
    return Choose(headerless_.gsm, frequency > 0);
}

Outcome CodecFile::SetFormatVOX(qint32 frequency) {
    headerless_.vox = {FormatKind::Vox, frequency, 1, 4, 0, RawPcm, 0};
    return Choose(headerless_.vox, frequency > 0);
}

Outcome CodecFile::SetFormatDSP() {
    return Choose({FormatKind::TrueSpeech, speechRateHz, 1, 1, trueSpeechBps, RawPcm, WaveTagTrueSpeech},
                  true);
}

Outcome CodecFile::SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) {
    // 1 is mono, 2 to 5 are the ways of two channels.
    const bool valid = IsOneOf<6>({16000, 22050, 24000, 32000, 44100, 48000}, frequency) &&
                       bitrateKbps >= 8 && bitrateKbps <= 384 && channels >= 1 && channels <= 5;
    return Choose(
        {FormatKind::Mp2, frequency, std::min(channels, 2), 16, bitrateKbps * bitsPerKbit, RawPcm, 0}, valid);
}

Outcome CodecFile::SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) {
    const bool valid =
        IsOneOf<9>({8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}, frequency) &&
        bitrateKbps >= 8 && bitrateKbps <= 320 && IsMonoOrStereo(channels);
    return Choose({FormatKind::Mp3, frequency, channels, 16, bitrateKbps * bitsPerKbit, RawPcm, 0}, valid);
}

Outcome CodecFile::SetFormatMP3Options(const Mp3Options& options) {
    return SetFormatMP3(options.frequency, options.bitrate, options.channels);
}

Outcome CodecFile::SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                      qint32 minimumKbps, qint32 maximumKbps, qint32 /*quality*/) {
    return Choose({FormatKind::Vorbis, frequency, channels, 16, nominalKbps * bitsPerKbit, RawPcm, 0},
                  IsAvailableFormatOggVorbis(frequency, channels, nominalKbps, minimumKbps, maximumKbps));
}

bool CodecFile::IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                           qint32 minimumKbps, qint32 maximumKbps) {
    const bool ordered = minimumKbps <= nominalKbps && (maximumKbps <= 0 || nominalKbps <= maximumKbps);
    return frequency >= 8000 && frequency <= 48000 && IsMonoOrStereo(channels) && nominalKbps >= 0 &&
           nominalKbps <= 500 && ordered;
}

Outcome CodecFile::SetFormatWMA(qint32 profile) {
    return Choose({FormatKind::WindowsMedia, 0, 0, 16, 0, RawPcm, 0}, profile >= 0);
}

Outcome CodecFile::SetFormatG721(qint32 frequency) {
    headerless_.g721 = {FormatKind::G721, frequency, 1, 4, 0, RawPcm, 0};
    return Choose(headerless_.g721, frequency > 0);
}

Outcome CodecFile::SetFormatG723(qint32 frequency, qint32 bits) {
    headerless_.g723 = {FormatKind::G723, frequency, 1, bits, 0, RawPcm, 0};
    return Choose(headerless_.g723, frequency > 0 && (bits == 3 || bits == 5));
}

Outcome CodecFile::SetFormatG726(qint32 frequency, qint32 bits) {
    headerless_.g726 = {FormatKind::G726, frequency, 1, bits, 0, RawPcm, 0};
    return Choose(headerless_.g726, frequency > 0 && bits >= 2 && bits <= 5);
}

Outcome CodecFile::SelectFormat() {
    return Outcome::NotSupported;
}

void CodecFile::SetBlockOption(qint32 /*option*/, qint32 /*value*/) {}

void CodecFile::SetFlag(qint32 /*value*/) {}

} // namespace kestrune
