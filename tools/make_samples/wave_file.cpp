#include "wave_file.h"

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <random>

namespace kestrune {

namespace {

QByteArray Number(quint32 value, int bytes) {
    QByteArray out(4, '\0');
    qToLittleEndian(value, out.data());
    return out.left(bytes);
}

QByteArray Chunk(const char* id, const QByteArray& content) {
    QByteArray chunk = QByteArray(id, 4) + Number(static_cast<quint32>(content.size()), 4) + content;
    if (chunk.size() % 2 != 0) {
        chunk.append('\0');
    }
    return chunk;
}

QByteArray TextChunk(const char* id, const QString& text) {
    return text.isEmpty() ? QByteArray() : Chunk(id, text.toUtf8() + '\0');
}

QByteArray FormatChunk(int rateHz, int channels) {
    const int frameBytes = 2 * channels;
    return Chunk("fmt ", Number(1, 2) + Number(static_cast<quint32>(channels), 2) +
                             Number(static_cast<quint32>(rateHz), 4) +
                             Number(static_cast<quint32>(rateHz * frameBytes), 4) +
                             Number(static_cast<quint32>(frameBytes), 2) + Number(16, 2));
}

QByteArray Samples(const Sound& sound, int channels) {
    std::minstd_rand random(7);
    const auto half = [&random] { return static_cast<double>(random()) / std::minstd_rand::max() - 0.5; };
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(sound.left.size()) * 2 * channels);
    const auto append = [&](double sample) {
        const double dithered = sample == 0 ? 0 : sample * 32767 + half() + half();
        bytes.append(Number(static_cast<quint32>(std::lround(std::clamp(dithered, -32768.0, 32767.0))), 2));
    };
    for (std::size_t at = 0; at < sound.left.size(); ++at) {
        if (channels == 1) {
            append((sound.left[at] + sound.right[at]) / 2);
        } else {
            append(sound.left[at]);
            append(sound.right[at]);
        }
    }
    return bytes;
}

} // namespace

bool WriteWave(const QString& path, const Sound& sound, int channels, const PieceTexts& texts) {
    const QByteArray list =
        TextChunk("INAM", texts.title) + TextChunk("IART", texts.artist) + TextChunk("IPRD", texts.album);
    QByteArray body = "WAVE" + FormatChunk(sound.rateHz, channels);
    if (!list.isEmpty()) {
        body += Chunk("LIST", "INFO" + list);
    }
    body += Chunk("data", Samples(sound, channels));
    QFile file(path);
    const QByteArray riff = Chunk("RIFF", body);
    return file.open(QIODevice::WriteOnly) && file.write(riff) == riff.size();
}

} // namespace kestrune
