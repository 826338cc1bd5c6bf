#include "backends/tags/wave_facts.h"

#include "backends/formats/codec_names.h"
#include "backends/formats/mpeg_scan.h"
#include "backends/tags/wave_numbers.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr qint64 firstChunk = 12; // behind RIFF, size, WAVE
constexpr int mostChunks = 64;
constexpr qint64 chunkHeadBytes = 8;
// Of the format chunk: 16 bytes that all kinds have, the size of the rest, then by kind a coding's frames per
// block, or bits, speakers and the coding's long name, which begins with its number.
constexpr qsizetype commonBytes = 16;
constexpr qsizetype blockKindBytes = 20;
constexpr qsizetype extensibleBytes = 26;
constexpr int extensibleTag = 0xFFFE;

struct WaveShape {
    int formatTag = 0;
    int channels = 0;
    int rateHz = 0;
    int bits = 0;
    qint64 bytesPerSecond = 0; // as the header tells; writers get it wrong at times
    int blockBytes = 0;
    int framesPerBlock = 0; // 0 if the header does not tell
    qint64 toldFrames = 0;  // 0 if the header does not tell
    qint64 dataOffset = 0;  // bytes from the start of the file
    qint64 dataBytes = 0;   // without padding and never beyond the end of the file
};

int Word(const QByteArray& bytes, int at) {
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

qint64 DoubleWord(const QByteArray& bytes, int at) {
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

int ClampToInt(double value) {
    return static_cast<int>(std::clamp<double>(value, 0, std::numeric_limits<int>::max()));
}

void TakeFormat(WaveShape& shape, const QByteArray& format) {
    if (format.size() < commonBytes) {
        return;
    }
    shape.formatTag = Word(format, 0);
    shape.channels = Word(format, 2);
    shape.rateHz = static_cast<int>(std::min<qint64>(DoubleWord(format, 4), std::numeric_limits<int>::max()));
    shape.bytesPerSecond = DoubleWord(format, 8);
    shape.blockBytes = Word(format, 12);
    shape.bits = Word(format, 14);
    if (shape.formatTag == extensibleTag && format.size() >= extensibleBytes) {
        shape.formatTag = Word(format, 24);
    } else if (format.size() >= blockKindBytes) {
        shape.framesPerBlock = Word(format, 18);
    }
}

WaveShape ReadShape(BoundedFile& file) {
    WaveShape shape;
    qint64 position = firstChunk;
    for (int chunk = 0; chunk < mostChunks; ++chunk) {
        const QByteArray head = file.ReadAt(position, chunkHeadBytes);
        if (head.size() < chunkHeadBytes) {
            break;
        }
        const qint64 sizeBytes = DoubleWord(head, 4);
        const qint64 content = position + chunkHeadBytes;
        if (head.startsWith("fmt ")) {
            TakeFormat(shape, file.Read(std::min<qint64>(sizeBytes, extensibleBytes)));
        } else if (head.startsWith("fact") && sizeBytes >= 4) {
            const QByteArray told = file.Read(4);
            shape.toldFrames = told.size() == 4 ? DoubleWord(told, 0) : 0;
        } else if (head.startsWith("data")) {
            shape.dataOffset = content;
            // 0 is what an interrupted writer leaves.
            const qint64 leftBytes = std::max<qint64>(file.SizeBytes() - content, 0);
            shape.dataBytes = sizeBytes == 0 ? leftBytes : std::min(sizeBytes, leftBytes);
            break;
        }
        position = content + sizeBytes + (sizeBytes & 1);
    }
    return shape;
}

// Bits that a sample takes in codings of one value a sample; 0 in others.
int PlainBits(const WaveShape& shape) {
    const int tag = shape.formatTag;
    return tag == 1 || tag == 3 || tag == 6 || tag == 7 ? (shape.bits + 7) / 8 * 8 : 0;
}

bool IsMpeg(const WaveShape& shape) {
    return shape.formatTag == 0x50 || shape.formatTag == 0x55;
}

void MeasurePlain(AudioFacts& facts, const WaveShape& shape, int bits) {
    const qint64 frameBits = static_cast<qint64>(shape.channels) * bits;
    facts.bitrateBps = ClampToInt(static_cast<double>(frameBits) * shape.rateHz);
    facts.frames = shape.dataBytes * 8 / frameBits;
}

// Blocks of one size and length tell all; the count of frames only says how many of the last block are meant.
void MeasureBlocks(AudioFacts& facts, const WaveShape& shape) {
    facts.bitrateBps = ClampToInt(8.0 * shape.blockBytes * shape.rateHz / shape.framesPerBlock + 0.5);
    const qint64 blocks = (shape.dataBytes + shape.blockBytes - 1) / shape.blockBytes;
    const qint64 held = blocks * shape.framesPerBlock;
    facts.frames = shape.toldFrames > 0 ? std::min(shape.toldFrames, held) : held;
}

void MeasureByRate(AudioFacts& facts, const WaveShape& shape, BoundedFile& file) {
    double bps = static_cast<double>(shape.bytesPerSecond) * 8;
    if (IsMpeg(shape)) {
        if (const auto frame = FindMpegFrame(file, shape.dataOffset)) {
            bps = frame->bitrateBps;
        }
    }
    facts.bitrateBps = ClampToInt(bps);
    facts.frames = shape.toldFrames;
    if (facts.frames == 0 && bps > 0) {
        facts.frames = static_cast<qint64>(static_cast<double>(shape.dataBytes) * 8 / bps * shape.rateHz);
    }
}

} // namespace

std::optional<AudioFacts> WaveFacts(BoundedFile& file) {
    const WaveShape shape = ReadShape(file);
    const AVCodecID coding = CodingOfWaveFormat(shape.formatTag, shape.bits);
    if (shape.channels == 0 || shape.rateHz == 0 || avcodec_find_decoder(coding) == nullptr) {
        return std::nullopt;
    }
    AudioFacts facts;
    facts.kind = CodecName(coding);
    facts.formatTag = shape.formatTag;
    facts.rateHz = shape.rateHz;
    facts.channels = shape.channels;
    facts.bitsPerSample = shape.bits > 0 && IsLossless(coding) ? shape.bits : 16;
    if (const int bits = PlainBits(shape)) {
        MeasurePlain(facts, shape, bits);
    } else if (!IsMpeg(shape) && shape.blockBytes > 0 && shape.framesPerBlock > 0) {
        MeasureBlocks(facts, shape);
    } else {
        MeasureByRate(facts, shape, file);
    }
    facts.frames = std::clamp<qint64>(shape.dataBytes > 0 ? facts.frames : 0, 0, mostFrames);
    facts.durationMs = DurationOfFrames(facts.frames, facts.rateHz);
    return facts;
}

} // namespace kestrune
