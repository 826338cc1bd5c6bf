#include "backends/tags/wave_blocks.h"

#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint64 firstChunk = 12; // behind RIFF, size, WAVE
constexpr int mostChunks = 32;
constexpr qint64 chunkHeadBytes = 8;
// Of the format chunk: 16 bytes that all kinds have, the size of the rest, and a coding's frames per block.
constexpr qsizetype commonBytes = 16;
constexpr qsizetype blockKindBytes = 20;

void TakeFormat(WaveBlocks& blocks, const QByteArray& format) {
    if (format.size() >= commonBytes) {
        blocks.bytesPerSecond = qFromLittleEndian<quint32>(format.constData() + 8);
        blocks.blockBytes = qFromLittleEndian<quint16>(format.constData() + 12);
    }
    if (format.size() >= blockKindBytes) {
        blocks.framesPerBlock = qFromLittleEndian<quint16>(format.constData() + 18);
    }
}

} // namespace

WaveBlocks ReadWaveBlocks(BoundedFile& file) {
    WaveBlocks blocks;
    qint64 position = firstChunk;
    for (int chunk = 0; chunk < mostChunks; ++chunk) {
        const QByteArray head = file.ReadAt(position, chunkHeadBytes);
        if (head.size() < chunkHeadBytes) {
            break;
        }
        const qint64 sizeBytes = qFromLittleEndian<quint32>(head.constData() + 4);
        if (head.startsWith("fmt ")) {
            TakeFormat(blocks, file.Read(std::min<qint64>(sizeBytes, blockKindBytes)));
        } else if (head.startsWith("data")) {
            blocks.dataBytes = std::min(sizeBytes, file.SizeBytes() - position - chunkHeadBytes);
            break;
        }
        position += chunkHeadBytes + sizeBytes + (sizeBytes & 1);
    }
    return blocks;
}

} // namespace kestrune
