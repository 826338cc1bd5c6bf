#include "backends/audio_file/codec_file.h"

#include "app/failure_log.h"
#include "backends/formats/format_text.h"
#include "components/pcm.h"

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
    const Outcome outcome = input_.Open(file, heldHeaderless_.value_or(Headerless()));
    if (outcome != Outcome::Ok) {
        qCWarning(logCodecs) << "cannot read" << file << "outcome" << static_cast<int>(outcome);
    }
    return outcome;
}

Outcome CodecFile::CloseFile() {
    if (output_) {
        return CloseOutput();
    }
    const bool wasOpen = input_.IsOpen();
    input_.Close();
    return wasOpen ? Outcome::Ok : Outcome::NotOpen;
}

QByteArray CodecFile::ReadBlock(qint64 size) {
    return input_.IsOpen() ? input_.Read(size) : QByteArray();
}

qint64 CodecFile::SeekTo(qint64 position, qint32 /*whence*/) {
    return input_.IsOpen() ? input_.SeekTo(position) : -1;
}

qint32 CodecFile::GetFormatId() const {
    return input_.IsOpen() || output_ ? openFormatId : noFormatId;
}

qint64 CodecFile::GetLengthBytes() {
    return input_.IsOpen() ? input_.LengthBytes() : 0;
}

qint64 CodecFile::GetLengthMs() {
    return pcmMsForBytes(GetLengthBytes(), GetWaveFormat(), GetChannels());
}

qint32 CodecFile::GetChannels() const {
    return input_.IsOpen() ? input_.Info().channels : sourceShape_.channels;
}

qint32 CodecFile::GetWaveFormat() const {
    return input_.IsOpen() ? input_.Info().rateHz : sourceShape_.rateHz;
}

QString CodecFile::GetFormatText() const {
    if (!input_.IsOpen()) {
        return FormatChoice::GetFormatText();
    }
    const SourceInfo& info = input_.Info();
    return FormatText(info.kind, info.rateHz, info.bitrateBps, info.channels, BitrateUnit::Small);
}

qint32 CodecFile::BlockDivisor() const {
    return 1;
}

void CodecFile::HoldInputFormats(bool hold) {
    if (!hold) {
        heldHeaderless_.reset();
    } else if (!heldHeaderless_) {
        heldHeaderless_ = Headerless();
    }
}

void CodecFile::SetBlockOption(qint32 /*option*/, qint32 /*value*/) {}

} // namespace kestrune
