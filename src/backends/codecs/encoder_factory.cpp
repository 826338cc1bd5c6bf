#include "backends/codecs/encoder_factory.h"

#include "backends/codecs/adpcm_encoder.h"
#include "backends/codecs/dsp/truespeech_encoder.h"
#include "backends/codecs/g72x_encoder.h"
#include "backends/codecs/gsm_encoder.h"
#include "backends/codecs/mp2_encoder.h"
#include "backends/codecs/mp3_encoder.h"
#include "backends/codecs/pcm_encoder.h"
#include "backends/codecs/vorbis_encoder.h"
#include "backends/codecs/vox_encoder.h"
#include "backends/codecs/wave_template.h"
#include "backends/codecs/wma_encoder.h"

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
