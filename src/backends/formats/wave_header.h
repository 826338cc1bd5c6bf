// The header of a WAVE file: what its samples are and where they stand.
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

class QIODevice;

namespace kestrune {

enum WaveTag : quint16 {
    WaveTagPcm = 1,
    WaveTagMsAdpcm = 2,
    WaveTagFloat = 3,
    WaveTagALaw = 6,
    WaveTagMuLaw = 7,
    WaveTagImaAdpcm = 0x11,
    WaveTagTrueSpeech = 0x22,
    WaveTagGsm610 = 0x31,
    WaveTagMp3 = 0x55,
    WaveTagExtensible = 0xFFFE,
};

struct WaveHeader {
    quint16 tag = 0; // of an extensible header, the one its sub-format stands for
    int channels = 0;
    int rateHz = 0;
    int bytesPerSecond = 0;
    int blockBytes = 0;
    int bits = 0;            // of a sample
    quint32 speakerMask = 0; // 0 when not told
    qint64 dataOffset = 0;   // bytes from the start of the file
    qint64 dataBytes = 0;    // never beyond the end of the file
    QByteArray format;       // the "fmt " chunk, cut to 4,096 bytes
};

// Reads the header of a RIFF, RF64 or BW64 file from the device's start. Empty if it is none, or if channels,
// rate or the data are missing. A data size that does not fit 32 bits and was stored cut, or left open or 0
// by a writer that could not go back or was interrupted, is made whole by the size of the file.
std::optional<WaveHeader> ReadWaveHeader(QIODevice& device);

} // namespace kestrune
