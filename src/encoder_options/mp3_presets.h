// What the presets and the command line of the MPEG layer 3 settings stand for. Pure functions; any thread.
#pragma once

#include "components/audio_format.h"

#include <QString>
#include <array>

namespace kestrune {

enum Mp3ChannelMode : qint32 { Mp3Mono, Mp3Stereo, Mp3Joint, Mp3ForcedJoint, Mp3Dual };
enum Mp3VbrMethod : qint32 { Mp3NoVbr = -1, Mp3UsualVbr, Mp3OldVbr, Mp3NewVbr, Mp3Mtrh, Mp3AverageRate };

constexpr int mp3PresetCount = 11;
constexpr int mp3AltPresetCount = 5;
// From number 1 on.
inline constexpr std::array<const char*, mp3PresetCount> presetTexts = {
    "Phone", "SW", "AM", "FM", "Voice", "Radio", "Tape", "HiFi", "CD", "Studio", "R3Mix"};
inline constexpr std::array<const char*, mp3AltPresetCount> altPresetTexts = {
    "Fast Standard", "Standard", "Fast Extreme", "Extrene", "Insane"};

// Each sets the property that it is named after and all others that the encoder reads. A number that names no
// preset changes nothing.
//
// Presets 1 to 10 are average bit rates: phone 16, short wave 24, medium wave 40 and voice 56 kbit/s in mono
// at a sample rate to match; FM, radio and tape 112, hi-fi 160, CD 192 and studio 256 in joint stereo. 11 is
// variable bit rate of quality 3. They are the figures that LAME's manual gives for the names.
void ApplyPreset(Mp3Options& options, int preset);
// 1 fast standard, 2 standard, 3 fast extreme, 4 extreme: variable bit rate of quality 2, 2, 0, 0, the fast
// ones by the newer method and the others by the older, slower one; 5 insane: constant 320 kbit/s.
void ApplyAltPreset(Mp3Options& options, int preset);

// What the presets are made of: joint stereo at a sample rate for music, and all else as at the start.
void ApplyAverageRate(Mp3Options& options, int kbps);
void ApplyVariableRate(Mp3Options& options, qint32 vbrMethod, int vbrQuality);
// Lets a rate that varies go down to the lowest that there is. `bitrate` becomes about what its quality comes
// to: other outputs that have no rate of their own follow it.
void FreeVariableRate(Mp3Options& options);
// The number of channels with it.
void SetMp3ChannelMode(Mp3Options& options, qint32 mode);
// The lowest bit rate that the sample rate knows.
int LeastMp3Kbps(const Mp3Options& options);

// Words as they are given to the program `lame`, quoted as in a shell: single letters may stand together
// ("-hmj") and have their value attached ("-b192"). Sets the properties that the known options stand for, in
// their order; file names and what is not known, or has a value that is no number, changes nothing. Where a
// line lets the rate vary and names no least one, the least one is the lowest that there is.
//
// -b kbit/s (the least one if the rate varies), --cbr, --abr kbit/s, -V n, -v, --vbr-old, --vbr-new,
// --vbr-mtrh, -B kbit/s, -F, -t, -T; -m s j f d m, -a, -q n, -h, -f, -p, -e n 5 c, -d, --noshort, --short,
// --nores, --strictly-enforce-ISO, --athonly, --noath, --athshort, --lowpass, --lowpass-width, --highpass,
// --highpass-width (in kHz, or in Hz from 50 on), -k, --resample kHz or Hz, --r3mix, --preset and
// --alt-preset with a name or an average bit rate, "fast" or "cbr" before it.
void ApplyCommandLine(Mp3Options& options, const QString& commandLine);

} // namespace kestrune
