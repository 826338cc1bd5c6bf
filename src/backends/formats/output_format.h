// The format that the SetFormat calls of an audio file choose: for writing, and for reading headerless files.
#pragma once

#include "components/audio_format.h"

#include <QByteArray>
#include <QString>

namespace kestrune {

enum class FormatKind {
    None,
    Pcm,
    Template, // as the WAVE file that was named: waveTag tells the coding
    Raw,
    ImaAdpcm,
    Gsm,
    Vox,
    TrueSpeech,
    Mp2,
    Mp3,
    Vorbis,
    WindowsMedia,
    G721,
    G723,
    G726
};

// How an Ogg Vorbis file is driven.
struct VorbisRates {
    qint32 nominalKbps = 128;
    qint32 minimumKbps = 0; // 0 and below: not held
    qint32 maximumKbps = 0;
    qint32 quality = -1; // 0 to 1000 (100 times the usual figure), then the rates do not count; -1 by rates
    bool operator==(const VorbisRates&) const = default;
};

struct OutputFormat {
    FormatKind kind = FormatKind::None;
    int rateHz = 0;
    int channels = 0;
    int bits = 0;       // of a sample, as it is stored
    int bitrateBps = 0; // 0 where it follows from the others or is not told
    qint32 rawType = RawPcm;
    quint16 waveTag = 0; // of a template: WaveTag numbers
    // What only one kind has.
    Mp3Options mp3 = {};
    VorbisRates vorbis = {};
    qint32 mp2Channels = 2; // 1 mono, 2 stereo, 3 joint, 4 forced joint, 5 dual
    qint32 wmaProfile = 39;
    QByteArray waveFormat = {}; // of a template: its "fmt " chunk
    bool operator==(const OutputFormat&) const = default;
};

// Its kind as users read it; empty for None.
QString OutputKindName(const OutputFormat& format);

// The text of a format; empty for None.
QString OutputFormatText(const OutputFormat& format);

// Bits per second, as told or as the other figures imply; 0 if unknown.
int BitrateOf(const OutputFormat& format);

// How headerless files are taken: by the last call of the kind, or else by the usual values.
struct HeaderlessFormats {
    OutputFormat raw{FormatKind::Raw, 44100, 2, 16, 0, RawPcm, 0};
    OutputFormat adpcm{FormatKind::ImaAdpcm, 8000, 1, 4, 0, RawPcm, 0};
    OutputFormat gsm{FormatKind::Gsm, 8000, 1, 0, 0, RawPcm, 0};
    OutputFormat vox{FormatKind::Vox, 8000, 1, 4, 0, RawPcm, 0};
    OutputFormat g721{FormatKind::G721, 8000, 1, 4, 0, RawPcm, 0};
    OutputFormat g723{FormatKind::G723, 8000, 1, 5, 0, RawPcm, 0};
    OutputFormat g726{FormatKind::G726, 8000, 1, 4, 0, RawPcm, 0};
    bool operator==(const HeaderlessFormats&) const = default;
};

} // namespace kestrune
