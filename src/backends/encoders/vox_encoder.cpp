#include "backends/encoders/vox_encoder.h"

#include "backends/encoders/sndfile_encoder.h"

#include <sndfile.h>

namespace kestrune {

std::unique_ptr<SampleEncoder> MakeVoxEncoder(const OutputFormat& format) {
    constexpr int samplesPerByte = 2;
    return std::make_unique<SndfileEncoder>(SF_FORMAT_RAW | SF_FORMAT_VOX_ADPCM, format.rateHz,
                                            format.channels, samplesPerByte);
}

} // namespace kestrune
