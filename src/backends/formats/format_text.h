// The one-line description of an audio format that users read.
#pragma once

#include <QString>

namespace kestrune {

// How the unit of a bit rate is spelt.
enum class BitrateUnit { Capitals, Small };

// "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo" (or "128 kbps") of the kind's name, the rate in Hz, the bit
// rate in bits per second (shown in whole kbit/s, halves upward) and the channels. A figure that is 0 or
// below is left out. ASCII, below 190 characters; other characters of `kind` become "?". Any thread.
QString FormatText(const QString& kind, int rateHz, int bitrateBps, int channels,
                   BitrateUnit unit = BitrateUnit::Capitals);

} // namespace kestrune
