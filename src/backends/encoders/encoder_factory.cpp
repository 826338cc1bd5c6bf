#include "backends/encoders/encoder_factory.h"

#include "backends/encoders/adpcm_encoder.h"
#include "backends/encoders/g72x_encoder.h"
#include "backends/encoders/gsm_encoder.h"
#include "backends/encoders/mp2_encoder.h"
#include "backends/encoders/mp3_encoder.h"
#include "backends/encoders/pcm_encoder.h"
#include "backends/encoders/truespeech_encoder.h"
#include "backends/encoders/vorbis_encoder.h"
#include "backends/encoders/vox_encoder.h"
#include "backends/encoders/wave_template.h"
#include "backends/encoders/wma_encoder.h"

namespace kestrune {

std::unique_ptr<SampleEncoder> MakeEncoder(const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::None:
        return nullptr;
    case FormatKind::Pcm:
    case FormatKind::Raw:
        return MakePcmEncoder(format);
    case FormatKind::Template:
        return MakeTemplateEncoder(format);
    case FormatKind::ImaAdpcm:
        return MakeAdpcmEncoder(format);
    case FormatKind::Gsm:
        return MakeGsmEncoder(format);
    case FormatKind::Vox:
        return MakeVoxEncoder(format);
    case FormatKind::TrueSpeech:
        return MakeTrueSpeechEncoder(format);
    case FormatKind::Mp2:
        return MakeMp2Encoder(format);
    case FormatKind::Mp3:
        return MakeMp3Encoder(format);
    case FormatKind::Vorbis:
        return MakeVorbisEncoder(format);
    case FormatKind::WindowsMedia:
        return MakeWmaEncoder(format);
    case FormatKind::G721:
    case FormatKind::G723:
    case FormatKind::G726:
        return MakeG72xEncoder(format);
    }
    return nullptr;
}

} // namespace kestrune
