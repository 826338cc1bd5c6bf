// Chunks laid out byte by byte, as other programs write them.
#pragma once

#include <QByteArray>

namespace kestrune {

inline QByteArray Little(quint32 number, int count = 4) {
    QByteArray bytes;
    for (int shift = 0; shift < count * 8; shift += 8) {
        bytes.append(static_cast<char>(number >> shift));
    }
    return bytes;
}

inline QByteArray Big(quint32 number, int count = 4, int bits = 8) {
    QByteArray bytes;
    for (int shift = (count - 1) * bits; shift >= 0; shift -= bits) {
        bytes.append(static_cast<char>(number >> shift & ((1U << bits) - 1)));
    }
    return bytes;
}

// With the byte that makes the size even.
inline QByteArray Chunk(const char* id, const QByteArray& content) {
    return QByteArray(id, 4) + Little(static_cast<quint32>(content.size())) + content +
           QByteArray(content.size() % 2, '\0');
}

inline QByteArray Wave(const QByteArray& chunks) {
    return "RIFF" + Little(static_cast<quint32>(chunks.size()) + 4) + "WAVE" + chunks;
}

// 8000 Hz, mono, 8 bit.
inline QByteArray FormatChunk() {
    return Chunk("fmt ",
                 Little(1, 2) + Little(1, 2) + Little(8000) + Little(8000) + Little(1, 2) + Little(8, 2));
}

// Of `frames` bytes that are all different from their neighbours.
inline QByteArray DataChunk(int frames = 8000) {
    QByteArray sound;
    for (int frame = 0; frame < frames; ++frame) {
        sound.append(static_cast<char>(frame * 37 + frame / 256));
    }
    return Chunk("data", sound);
}

inline QByteArray CueEntry(quint32 number, quint32 frame) {
    return Little(number) + Little(frame) + "data" + Little(0) + Little(0) + Little(frame);
}

} // namespace kestrune
