#include "backends/reading/decode_cache.h"

#include "backends/formats/headerless_kind.h"
#include "backends/reading/source_factory.h"
#include "components/pcm.h"

#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace kestrune {

namespace {

// Blocks outside are not worth a queue, or would hold too much at once.
constexpr qint64 smallestBlockBytes = 1024;
constexpr qint64 largestBlockBytes = Q_INT64_C(16) << 20;

qint64 Nanoseconds(const timespec& time) {
    return static_cast<qint64>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

FileIdentity IdentityOf(const QString& path, const HeaderlessFormats& headerless) {
    FileIdentity identity;
    struct stat facts = {};
    if (stat(QFile::encodeName(path).constData(), &facts) == 0) {
        identity.path = path;
        identity.device = facts.st_dev;
        identity.inode = facts.st_ino;
        identity.bytes = facts.st_size;
        identity.modifiedNs = Nanoseconds(facts.st_mtim);
        identity.changedNs = Nanoseconds(facts.st_ctim);
        if (HeaderlessKindOf(path) != nullptr) {
            identity.formats = headerless;
        }
    }
    return identity;
}

} // namespace

DecodeCache::DecodeCache() = default;
DecodeCache::~DecodeCache() = default;

void DecodeCache::ReadAhead(qint64 mostKeptBytes) {
    readsAhead_ = true;
    mostKeptBytes_ = mostKeptBytes;
    if (mostKeptBytes == 0 && !ahead_) {
        decoder_.reset();
    }
}

void DecodeCache::ReadAtOnce() {
    ReadAhead(0);
    readsAhead_ = false;
}

qint64 DecodeCache::Frame() const {
    return frameBytes(info_.channels);
}

Outcome DecodeCache::Open(const QString& path, const HeaderlessFormats& headerless) {
    Close();
    // Looked at before the content, so that a change between the two is seen at the next opening.
    identity_ = IdentityOf(path, headerless);
    headerless_ = headerless;
    lengthBytes_ = -1;
    position_ = 0;
    if (decoder_ && mostKeptBytes_ > 0 && !identity_.path.isEmpty() && identity_ == decodedIdentity_) {
        info_ = decodedInfo_;
        ahead_ = true;
        open_ = true;
        return Outcome::Ok;
    }
    OpenedSource opened = OpenSource(path, headerless);
    source_ = std::move(opened.source);
    open_ = source_ != nullptr;
    untouched_ = true;
    if (open_) {
        info_ = source_->Info();
    }
    return opened.outcome;
}

void DecodeCache::Close() {
    if (ahead_) {
        // The file itself is let go.
        decoder_->TakeSource();
        if (!decoder_->IsWhole() || mostKeptBytes_ == 0) {
            decoder_.reset();
        }
    }
    ahead_ = false;
    open_ = false;
    source_.reset();
}

qint64 DecodeCache::LengthBytes() {
    if (ahead_) {
        if (const std::optional<qint64> total = decoder_->TotalBytes()) {
            return *total;
        }
        return lengthBytes_;
    }
    return source_ ? source_->LengthFrames() * Frame() : 0;
}

bool DecodeCache::StartsAhead(qint64 bytes) const {
    return readsAhead_ && source_ && untouched_ && bytes >= smallestBlockBytes && bytes <= largestBlockBytes;
}

bool DecodeCache::IsAhead(qint64 bytes) {
    if (position_ == decoder_->TotalBytes()) {
        return true;
    }
    return bytes == decoder_->BlockBytes() && position_ % bytes == 0 && decoder_->Has(position_ / bytes);
}

// The rest of the file, from where the reader stands, is read from the file itself.
void DecodeCache::LeaveAhead() {
    source_ = decoder_->TakeSource();
    if (!source_) {
        source_ = OpenSource(identity_.path, headerless_).source;
    }
    if (!decoder_->IsWhole()) {
        decoder_.reset();
    }
    ahead_ = false;
    untouched_ = false;
    if (source_) {
        source_->SeekTo(position_ / Frame());
    }
}

QByteArray DecodeCache::ReadFromDecoder() {
    if (position_ == decoder_->TotalBytes()) {
        return {};
    }
    QByteArray block = decoder_->Block(position_ / decoder_->BlockBytes());
    position_ += block.size();
    return block;
}

QByteArray DecodeCache::Read(qint64 bytes) {
    const qint64 whole = std::max<qint64>(bytes, 0) / Frame() * Frame();
    if (whole == 0) {
        return {};
    }
    if (!ahead_ && StartsAhead(whole)) {
        lengthBytes_ = source_->LengthFrames() * Frame();
        decoder_ = std::make_unique<AheadDecoder>(std::move(source_), whole, mostKeptBytes_);
        decodedIdentity_ = identity_;
        decodedInfo_ = info_;
        ahead_ = true;
    }
    if (ahead_ && IsAhead(whole)) {
        return ReadFromDecoder();
    }
    if (ahead_) {
        LeaveAhead();
    }
    return ReadDirectly(whole);
}

QByteArray DecodeCache::ReadDirectly(qint64 bytes) {
    untouched_ = false;
    // A caller may ask for more than there is; the room is taken as the samples come.
    constexpr qint64 roomBytes = Q_INT64_C(1) << 20;
    QByteArray block;
    qint64 wanted = source_ ? bytes / Frame() : 0;
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

qint64 DecodeCache::SeekTo(qint64 position) {
    qint64 whole = std::max<qint64>(position, 0) / Frame() * Frame();
    if (ahead_) {
        whole = std::min(whole, decoder_->TotalBytes().value_or(whole));
        const qint64 block = decoder_->BlockBytes();
        if (whole == decoder_->TotalBytes() || (whole % block == 0 && decoder_->Has(whole / block))) {
            position_ = whole;
            return position_;
        }
        position_ = whole;
        LeaveAhead();
    }
    untouched_ = false;
    return source_ ? source_->SeekTo(whole / Frame()) * Frame() : -1;
}

} // namespace kestrune
