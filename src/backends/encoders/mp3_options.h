// The settings of MPEG layer 3 as LAME takes them.
#pragma once

#include "components/audio_format.h"

#include <lame/lame.h>

#include <memory>

namespace kestrune {

struct LameCloser {
    void operator()(lame_global_flags* lame) const { lame_close(lame); }
};
using LameHandle = std::unique_ptr<lame_global_flags, LameCloser>;

// An encoder that is ready for samples of the options' rate; null when LAME refuses them. A bit rate that the
// sample rate does not know becomes the nearest one that it knows.
//
// The bit rate is the least one where it varies. It does not count if the average that is asked for is lower,
// and gives way to a largest one that is lower. A filter of -1 is the one that LAME chooses for the bit rate;
// a low pass from half the sample rate on lets everything through.
LameHandle MakeLame(const Mp3Options& options);

// One channel if either of the two settings says so.
bool IsMono(const Mp3Options& options);

} // namespace kestrune
