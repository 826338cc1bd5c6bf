#include "backends/encoders/wave_template.h"

#include "backends/encoders/adpcm_encoder.h"
#include "backends/encoders/gsm_encoder.h"
#include "backends/encoders/pcm_encoder.h"
#include "backends/encoders/truespeech_encoder.h"
#include "backends/encoders/wave_mp3_encoder.h"
#include "backends/formats/wave_header.h"

#include <QIODevice>

#include <algorithm>
#include <limits>
#include <optional>

namespace kestrune {

namespace {

constexpr int mostChannels = 2;

OutputFormat FormatOf(const WaveHeader& header) {
    OutputFormat format;
    format.kind = FormatKind::Template;
    format.rateHz = header.rateHz;
    format.channels = header.channels;
    format.bits = header.bits;
    format.bitrateBps =
        static_cast<int>(std::min<qint64>(header.bytesPerSecond * 8LL, std::numeric_limits<int>::max()));
    format.waveTag = header.tag;
    format.waveFormat = header.format;
    return format;
}

bool HasBits(const OutputFormat& format, std::initializer_list<int> offered) {
    return std::find(offered.begin(), offered.end(), format.bits) != offered.end();
}

// Whether the coding itself offers the figures; the encoder's Begin has the last word.
bool IsOffered(const OutputFormat& format, const WaveHeader& header) {
    switch (format.waveTag) {
    case WaveTagPcm:
        return HasBits(format, {8, 16, 24, 32});
    case WaveTagFloat:
        return HasBits(format, {32, 64});
    case WaveTagALaw:
    case WaveTagMuLaw:
        return true;
    case WaveTagImaAdpcm:
    case WaveTagMsAdpcm:
        return IsAdpcmBlock(header.blockBytes);
    case WaveTagGsm610:
        return format.channels == 1;
    case WaveTagTrueSpeech:
        return format.channels == 1 && format.rateHz == TrueSpeechFormat().rateHz;
    case WaveTagMp3:
        return IsWaveMp3(format);
    default:
        return false;
    }
}

} // namespace

Outcome ReadTemplateFormat(QIODevice& wave, OutputFormat& format) {
    const std::optional<WaveHeader> header = ReadWaveHeader(wave);
    if (!header) {
        return Outcome::NotDecodable;
    }
    const OutputFormat read = FormatOf(*header);
    if (read.channels > mostChannels || !IsOffered(read, *header)) {
        return Outcome::NotSupported;
    }
    format = read;
    return Outcome::Ok;
}

std::unique_ptr<SampleEncoder> MakeTemplateEncoder(const OutputFormat& format) {
    switch (format.waveTag) {
    case WaveTagImaAdpcm:
    case WaveTagMsAdpcm:
        return MakeAdpcmEncoder(format);
    case WaveTagGsm610:
        return MakeGsmEncoder(format);
    case WaveTagTrueSpeech:
        return MakeTrueSpeechEncoder(TrueSpeechFormat());
    case WaveTagMp3:
        return MakeWaveMp3Encoder(format);
    default:
        return MakePcmEncoder(format);
    }
}

} // namespace kestrune
