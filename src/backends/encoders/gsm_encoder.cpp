#include "backends/encoders/gsm_encoder.h"

#include "backends/encoders/sndfile_encoder.h"

#include <sndfile.h>

namespace kestrune {

std::unique_ptr<SampleEncoder> MakeGsmEncoder(const OutputFormat& format) {
    return std::make_unique<SndfileEncoder>(SF_FORMAT_WAV | SF_FORMAT_GSM610, format.rateHz, format.channels);
}

} // namespace kestrune
