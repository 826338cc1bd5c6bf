#include "backends/codecs/codec_file.h"

#include "backends/codecs/format_text.h"
#include "backends/codecs/source_factory.h"
#include "components/pcm.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint32 openFormatId = 1;
constexpr qint32 noFormatId = -1;

} // namespace

CodecFile::CodecFile() = default;
CodecFile::~CodecFile() = default;

std::unique_ptr<KSTAudioFile2> MakeAudioFile() {
    return std::make_unique<CodecFile>();
}

Outcome CodecFile::OpenRead(const QString& file, qint32 /*first*/, qint32 /*second*/) {
    CloseOutput();
    OpenedSource opened = OpenSource(file, headerless_);
    source_ = std::move(opened.source);
    if (!source_) {
        qCDebug(logCodecs) << "cannot read" << file << "outcome" << static_cast<int>(opened.outcome);
    }
    return opened.outcome;
}

Outcome CodecFile::CloseFile() {
    if (output_) {
        return CloseOutput();
    }
    const bool wasOpen = source_ != nullptr;
    source_.reset();
    return wasOpen ? Outcome::Ok : Outcome::NotOpen;
}

qint64 CodecFile::Frame() const {
    return frameBytes(source_->Info().channels);
}

QByteArray CodecFile::ReadBlock(qint64 size) {
    if (!source_ || size < Frame()) {
        return {};
    }
    // A caller may ask for more than there is; the room is taken as the samples come.
    constexpr qint64 roomBytes = Q_INT64_C(1) << 20;
    QByteArray block;
    qint64 wanted = size / Frame();
    while (wanted > 0) {
        const qint64 frames = std::min(wanted, roomBytes / Frame());
        const qsizetype before = block.size();
        block.resize(before + frames * Frame());
        const qint64 got = source_->Read(reinterpret_cast<qint16*>(block.data() + before), frames);
        wanted -= got;
        if (got < frames) {
            block.resize(before + got * Frame());
            break;
        }
    }
    return block;
}

qint64 CodecFile::SeekTo(qint64 position, qint32 /*whence*/) {
    if (!source_) {
        return -1;
    }
    return source_->SeekTo(std::max<qint64>(position, 0) / Frame()) * Frame();
}

qint32 CodecFile::GetFormatId() const {
    return source_ || output_ ? openFormatId : noFormatId;
}

qint64 CodecFile::GetLengthBytes() {
    return source_ ? source_->LengthFrames() * Frame() : 0;
}

qint64 CodecFile::GetLengthMs() {
    return pcmMsForBytes(GetLengthBytes(), GetWaveFormat(), GetChannels());
}

qint32 CodecFile::GetChannels() const {
    return source_ ? source_->Info().channels : sourceShape_.channels;
}

qint32 CodecFile::GetWaveFormat() const {
    return source_ ? source_->Info().rateHz : sourceShape_.rateHz;
}

QString CodecFile::GetFormatText() const {
    if (!source_) {
        return OutputFormatText(format_);
    }
    const SourceInfo& info = source_->Info();
    return FormatText(info.kind, info.rateHz, info.bitrateBps, info.channels, BitrateUnit::Small);
}

qint32 CodecFile::BlockDivisor() const {
    return 1;
}

qint32 CodecFile::GetFormatBits() const {
    return format_.bits;
}

qint32 CodecFile::GetRawType() const {
    return headerless_.raw.rawType;
}

} // namespace kestrune
