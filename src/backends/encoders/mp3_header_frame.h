// The frame at the start of an MPEG layer 3 file that tells its length and padding, where LAME leaves it out:
// it gives that frame the constant bit rate of the others, and below 64 kbit/s the frame may be too short to
// hold it.
//
// A frame of silence as ISO/IEC 11172-3 and 13818-3 have it. Behind its side information stands the mark
// "Info" with counts and places (Xing), then the encoder's block of 36 bytes (LAME's "Info tag", revision 1).
#pragma once

#include <QByteArray>

namespace kestrune {

// CRC-16 with the polynomial 8005, lowest bit first, from 0 on.
quint16 Mp3Sum(quint16 sum, const unsigned char* bytes, qsizetype count);

struct Mp3HeaderFacts {
    QByteArray soundHeader; // the four bytes that the frames with sound begin with
    int kbps = 0;           // of the frames with sound
    quint32 frames = 0;     // with sound
    quint32 soundBytes = 0; // of them
    quint16 soundSum = 0;   // Mp3Sum of them
    int delay = 0;          // samples before the first one of the input that the encoder puts there
    int padding = 0;        // samples behind its last one
    int lowpassHz = 0;
    int figure = 0;      // of quality, 0 to 100
    int channelMode = 0; // as Mp3Options has it
};

// Size of the frame that goes before such frames.
qsizetype Mp3HeaderBytes(const QByteArray& soundHeader);
QByteArray Mp3HeaderFrame(const Mp3HeaderFacts& facts);

} // namespace kestrune
