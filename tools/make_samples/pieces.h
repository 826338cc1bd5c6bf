// The music.
#pragma once

#include "sound.h"

namespace kestrune {

// Each gives a finished piece at a sample rate, ready to be written.
Sound FirstLight(int rateHz);
Sound PaperLanterns(int rateHz);
Sound HarbourSteps(int rateHz);
Sound SlowTide(int rateHz);
Sound MusicBox(int rateHz);
Sound NightSignal(int rateHz);

} // namespace kestrune
