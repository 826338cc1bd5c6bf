#include "backends/encoders/wave_writer.h"

#include "backends/formats/wave_header.h"

#include <QIODevice>
#include <QtEndian>

#include <limits>
#include <utility>

namespace kestrune {

namespace {

// The sizes in the header are of 32 bits, and the highest one means an open end.
constexpr qint64 mostFileBytes = std::numeric_limits<quint32>::max() - 1;

template <typename Number>
void AppendLittle(QByteArray& bytes, Number value) {
    const Number little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

bool FitsShort(int value) {
    return value >= 0 && value <= std::numeric_limits<quint16>::max();
}

QByteArray FormatBytes(const WaveFormatChunk& format) {
    QByteArray bytes;
    AppendLittle(bytes, format.tag);
    AppendLittle(bytes, static_cast<quint16>(format.channels));
    AppendLittle(bytes, static_cast<quint32>(format.rateHz));
    AppendLittle(bytes, format.bytesPerSecond);
    AppendLittle(bytes, static_cast<quint16>(format.blockBytes));
    AppendLittle(bytes, static_cast<quint16>(format.bits));
    if (format.tag != WaveTagPcm) {
        AppendLittle(bytes, static_cast<quint16>(format.extra.size()));
        bytes += format.extra;
    }
    return bytes;
}

void AppendChunk(QByteArray& bytes, const char* name, const QByteArray& content) {
    bytes += name;
    AppendLittle(bytes, static_cast<quint32>(content.size()));
    bytes += content;
    if (content.size() % 2 != 0) {
        bytes += '\0';
    }
}

} // namespace

WaveFormatChunk PlainWaveFormat(quint16 tag, int channels, int rateHz, int bits) {
    const int blockBytes = channels * (bits / 8);
    const qint64 bytesPerSecond = static_cast<qint64>(rateHz) * blockBytes;
    return {tag, channels, rateHz, static_cast<quint32>(bytesPerSecond), blockBytes, bits};
}

bool FitsWaveHeader(const WaveFormatChunk& format) {
    return format.channels >= 1 && format.channels <= 2 && format.rateHz >= 1 && format.blockBytes >= 1 &&
           FitsShort(format.blockBytes) && FitsShort(format.bits) &&
           FitsShort(static_cast<int>(format.extra.size())) &&
           static_cast<qint64>(format.rateHz) * format.blockBytes <= std::numeric_limits<quint32>::max();
}

WaveWriter::WaveWriter(WaveFormatChunk format) : format_(std::move(format)) {}

QByteArray WaveWriter::Header(qint64 frames) const {
    QByteArray body("WAVE");
    AppendChunk(body, "fmt ", FormatBytes(format_));
    if (format_.tag != WaveTagPcm) {
        QByteArray length;
        AppendLittle(length, static_cast<quint32>(frames));
        AppendChunk(body, "fact", length);
    }
    body += "data";
    AppendLittle(body, static_cast<quint32>(dataBytes_));
    QByteArray header("RIFF");
    AppendLittle(header, static_cast<quint32>(body.size() + dataBytes_ + dataBytes_ % 2));
    return header + body;
}

qint64 WaveWriter::DataOffset() const {
    return Header(0).size();
}

Outcome WaveWriter::Begin(QIODevice& out) {
    out_ = &out;
    const QByteArray header = Header(0);
    return out.write(header) == header.size() ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome WaveWriter::Write(const char* bytes, qint64 count) {
    if (out_ == nullptr) {
        return Outcome::NotOpen;
    }
    if (dataBytes_ + count > mostFileBytes - DataOffset() - 1) {
        return Outcome::WriteFailed;
    }
    dataBytes_ += count;
    return out_->write(bytes, count) == count ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome WaveWriter::Finish(qint64 frames) {
    if (out_ == nullptr) {
        return Outcome::NotOpen;
    }
    if (dataBytes_ % 2 != 0 && out_->write("\0", 1) != 1) {
        return Outcome::WriteFailed;
    }
    const qint64 end = out_->pos();
    const QByteArray header = Header(frames);
    const bool written = out_->seek(0) && out_->write(header) == header.size() && out_->seek(end);
    return written ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace kestrune
