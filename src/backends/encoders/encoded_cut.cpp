#include "backends/encoders/encoded_cut.h"

#include "backends/encoders/asf_cut.h"
#include "backends/encoders/mpeg_cut.h"
#include "backends/encoders/ogg_cut.h"
#include "backends/formats/wave_header.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int bitsPerByte = 8;
constexpr int layer2Delay = 481;
constexpr int layer3Delay = 576 + 529; // of the coder and of the decoder
constexpr qint64 chunkHeadBytes = 8;
constexpr qint64 riffHeadBytes = 12;

// Sample frames in each block; 0 if it is not known.
int BlockFrames(const WaveHeader& header) {
    constexpr qsizetype framesAt = 18;
    constexpr qsizetype trueSpeechFramesAt = 20;
    const auto told = [&header](qsizetype at) {
        return header.format.size() >= at + 2 ? qFromLittleEndian<quint16>(header.format.constData() + at)
                                              : 0;
    };
    switch (header.tag) {
    case WaveTagMsAdpcm:
    case WaveTagImaAdpcm:
    case WaveTagGsm610:
        return told(framesAt);
    case WaveTagTrueSpeech:
        return told(trueSpeechFramesAt);
    case WaveTagPcm:
    case WaveTagFloat:
    case WaveTagALaw:
    case WaveTagMuLaw:
        return 1;
    default:
        return 0;
    }
}

std::optional<qint64> WaveDataEnd(QIODevice& file, const WaveHeader& header, qint64 frames) {
    if (header.tag == WaveTagMp3) {
        return MpegCut(file, header.dataOffset, frames, layer3Delay);
    }
    const int blockFrames = BlockFrames(header);
    if (blockFrames < 1 || header.blockBytes < 1) {
        return {};
    }
    const qint64 blocks = (frames + blockFrames - 1) / blockFrames;
    return header.dataOffset + std::min(blocks * header.blockBytes, file.size() - header.dataOffset);
}

bool PutLittle(QIODevice& file, qint64 at, qint64 value) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(static_cast<quint32>(value), bytes.data());
    return file.seek(at) && file.write(bytes) == bytes.size();
}

// The chunk that tells the length of coded sound, if there is one.
bool PutFact(QIODevice& file, qint64 dataOffset, qint64 frames) {
    for (qint64 at = riffHeadBytes; at + chunkHeadBytes < dataOffset;) {
        const QByteArray head = file.seek(at) ? file.read(chunkHeadBytes) : QByteArray();
        if (head.size() < chunkHeadBytes) {
            return false;
        }
        if (head.startsWith("fact")) {
            return PutLittle(file, at + chunkHeadBytes, frames);
        }
        const auto bytes = qFromLittleEndian<quint32>(head.constData() + 4);
        at += chunkHeadBytes + bytes + bytes % 2;
    }
    return true;
}

std::optional<qint64> WaveCut(QIODevice& file, qint64 frames) {
    const std::optional<WaveHeader> header = ReadWaveHeader(file);
    const std::optional<qint64> dataEnd = header ? WaveDataEnd(file, *header, frames) : std::nullopt;
    if (!dataEnd) {
        return {};
    }
    const qint64 dataBytes = *dataEnd - header->dataOffset;
    const qint64 end = *dataEnd + dataBytes % 2;
    const bool padded = dataBytes % 2 == 0 || (file.seek(*dataEnd) && file.write("\0", 1) == 1);
    const bool told = PutLittle(file, 4, end - chunkHeadBytes) &&
                      PutLittle(file, header->dataOffset - 4, dataBytes) &&
                      PutFact(file, header->dataOffset, frames);
    return padded && told ? std::optional(end) : std::nullopt;
}

qint64 BytesOf(qint64 samples, int bits) {
    return (samples * bits + bitsPerByte - 1) / bitsPerByte;
}

} // namespace

std::optional<qint64> CutEncoded(QIODevice& file, const OutputFormat& format, qint64 frames) {
    switch (format.kind) {
    case FormatKind::None:
        break;
    case FormatKind::Pcm:
    case FormatKind::Template:
    case FormatKind::ImaAdpcm:
    case FormatKind::Gsm:
    case FormatKind::TrueSpeech:
        return WaveCut(file, frames);
    case FormatKind::Raw:
        return std::min(BytesOf(frames * format.channels, format.bits), file.size());
    case FormatKind::Vox:
    case FormatKind::G721:
    case FormatKind::G723:
    case FormatKind::G726:
        return std::min(BytesOf(frames, format.bits), file.size());
    case FormatKind::Mp2:
        return MpegCut(file, 0, frames, layer2Delay);
    case FormatKind::Mp3:
        return Mp3Cut(file, frames);
    case FormatKind::Vorbis:
        return OggCut(file, frames);
    case FormatKind::WindowsMedia:
        return AsfCut(file, frames, format.rateHz);
    }
    return {};
}

} // namespace kestrune
