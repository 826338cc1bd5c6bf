#include "backends/tags/riff_chunks.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr qsizetype mostChunks = 10000;
constexpr quint32 openSize = std::numeric_limits<quint32>::max(); // left by writers that cannot go back

quint32 NumberAt(const QByteArray& bytes, qsizetype at, bool bigEndian) {
    return bigEndian ? qFromBigEndian<quint32>(bytes.constData() + at)
                     : qFromLittleEndian<quint32>(bytes.constData() + at);
}

bool IsChunkHead(const QByteArray& head) {
    return head.size() == chunkHeadBytes && std::all_of(head.begin(), head.begin() + 4, [](char letter) {
               return letter >= ' ' && letter <= '~';
           });
}

// Whether chunks go on at `position`, or the file ends there.
bool MayGoOn(BoundedFile& file, qint64 position) {
    return position == file.SizeBytes() || IsChunkHead(file.ReadAt(position, chunkHeadBytes));
}

// Some writers leave the padding out.
bool IsPadded(BoundedFile& file, qint64 contentEnd) {
    return contentEnd < file.SizeBytes() && (MayGoOn(file, contentEnd + 1) || !MayGoOn(file, contentEnd));
}

bool IsSound(const RiffChunk& chunk) {
    return chunk.id == "data" || chunk.id == "SSND";
}

// Writers put the size of the sound in last, so one that was interrupted leaves 0: then the sound runs to the
// end of the file.
RiffChunk ChunkAt(BoundedFile& file, qint64 offset, const QByteArray& head, bool bigEndian) {
    RiffChunk chunk;
    chunk.id = head.left(4);
    chunk.offset = offset;
    const qint64 toldBytes = NumberAt(head, 4, bigEndian);
    const qint64 content = offset + chunkHeadBytes;
    const qint64 leftBytes = file.SizeBytes() - content;
    const bool unfinished = toldBytes == 0 && leftBytes > 0 && IsSound(chunk);
    chunk.cut = unfinished || toldBytes > leftBytes;
    chunk.sizeBytes = chunk.cut ? leftBytes : toldBytes;
    chunk.padded = !chunk.cut && (toldBytes & 1) != 0 && IsPadded(file, content + toldBytes);
    return chunk;
}

// What comes behind the chunks is no part of them only if the sound is one.
bool IsUnderstood(const RiffForm& form) {
    return form.endBytes == form.fileBytes || std::any_of(form.chunks.begin(), form.chunks.end(), IsSound);
}

// The new size for the whole. One that was left open stays so.
QByteArray HeadFor(const RiffForm& form, qint64 newEndBytes, bool isCut) {
    const quint32 old = NumberAt(form.head, 4, form.bigEndian);
    qint64 size = newEndBytes - chunkHeadBytes;
    if (isCut) {
        const qint64 grown = old + newEndBytes - form.endBytes;
        size = old == 0 || old == openSize ? old : std::clamp<qint64>(grown, 0, openSize);
    }
    return form.head.left(4) + FourBytes(static_cast<quint32>(size), form.bigEndian) + form.head.mid(8, 4);
}

// Whether a chunk stood right behind another in the file, and is to stay as it was.
bool Followed(const RiffChunk& chunk, const RiffChunk& next) {
    const qint64 endBytes = chunk.offset + chunkHeadBytes + chunk.sizeBytes + (chunk.padded ? 1 : 0);
    return !next.change && next.offset == endBytes;
}

} // namespace

QByteArray FourBytes(quint32 number, bool bigEndian) {
    QByteArray bytes(4, Qt::Uninitialized);
    if (bigEndian) {
        qToBigEndian(number, bytes.data());
    } else {
        qToLittleEndian(number, bytes.data());
    }
    return bytes;
}

std::optional<RiffForm> ReadRiffForm(BoundedFile& file) {
    RiffForm form;
    form.head = file.ReadAt(0, riffHeadBytes);
    if (form.head.size() < riffHeadBytes || !(form.head.startsWith("RIFF") || form.head.startsWith("FORM"))) {
        return std::nullopt;
    }
    form.bigEndian = form.head.startsWith("FORM");
    form.fileBytes = file.SizeBytes();
    form.endBytes = riffHeadBytes;
    while (true) {
        const QByteArray head = file.ReadAt(form.endBytes, chunkHeadBytes);
        if (!IsChunkHead(head)) {
            return IsUnderstood(form) ? std::make_optional(form) : std::nullopt;
        }
        if (form.chunks.size() == mostChunks) {
            return std::nullopt;
        }
        const RiffChunk chunk = ChunkAt(file, form.endBytes, head, form.bigEndian);
        form.endBytes += chunkHeadBytes + chunk.sizeBytes + (chunk.padded ? 1 : 0);
        form.chunks.append(chunk);
    }
}

QByteArray ChunkContent(BoundedFile& file, const RiffChunk& chunk) {
    return chunk.change ? *chunk.change : file.ReadAt(chunk.offset + chunkHeadBytes, chunk.sizeBytes);
}

qsizetype FindChunk(const RiffForm& form, const QByteArray& id) {
    for (qsizetype at = 0; at < form.chunks.size(); ++at) {
        if (form.chunks[at].id == id) {
            return at;
        }
    }
    return -1;
}

qsizetype FindList(BoundedFile& file, const RiffForm& form, const QByteArray& kind) {
    for (qsizetype at = 0; at < form.chunks.size(); ++at) {
        const RiffChunk& chunk = form.chunks[at];
        if (chunk.id != "LIST" || chunk.cut) {
            continue;
        }
        const QByteArray found =
            chunk.change ? chunk.change->left(4) : file.ReadAt(chunk.offset + chunkHeadBytes, 4);
        if (found == kind) {
            return at;
        }
    }
    return -1;
}

void AddChunk(RiffForm& form, const QByteArray& id, const QByteArray& content) {
    RiffChunk chunk;
    chunk.id = id;
    chunk.change = content;
    // What stands behind the sound and is no chunk may be sound too, of a writer that told the size now and
    // then and did not come to its end.
    const bool tail = form.endBytes < form.fileBytes;
    const bool openEnd =
        !form.chunks.isEmpty() && (form.chunks.back().cut || (tail && IsSound(form.chunks.back())));
    form.chunks.insert(form.chunks.size() - (openEnd ? 1 : 0), chunk);
}

std::optional<FilePieces> PiecesOf(const RiffForm& form) {
    FilePieces body;
    qint64 endBytes = riffHeadBytes;
    for (qsizetype at = 0; at < form.chunks.size(); ++at) {
        const RiffChunk& chunk = form.chunks[at];
        if (chunk.change) {
            const bool odd = (chunk.change->size() & 1) != 0;
            const QByteArray bytes = chunk.id +
                                     FourBytes(static_cast<quint32>(chunk.change->size()), form.bigEndian) +
                                     *chunk.change + QByteArray(odd ? 1 : 0, '\0');
            body.AddBytes(bytes);
            endBytes += bytes.size();
            continue;
        }
        const qint64 bytes = chunkHeadBytes + chunk.sizeBytes + (chunk.padded ? 1 : 0);
        body.AddRange(chunk.offset, bytes);
        endBytes += bytes;
        // Where the padding was left out it stays so only in front of the chunk that was there: of another
        // one the second letter of the name could be taken for the first.
        const bool isFollowed = at + 1 < form.chunks.size();
        if ((bytes & 1) != 0 && isFollowed && !Followed(chunk, form.chunks[at + 1])) {
            body.AddBytes(QByteArray(1, '\0'));
            ++endBytes;
        }
    }
    const qint64 tailBytes = form.fileBytes - form.endBytes;
    if (endBytes + tailBytes > std::numeric_limits<quint32>::max()) {
        return std::nullopt;
    }
    FilePieces pieces;
    const bool isCut = !form.chunks.isEmpty() && form.chunks.back().cut;
    pieces.AddBytes(HeadFor(form, endBytes, isCut));
    pieces.Append(body);
    pieces.AddRange(form.endBytes, tailBytes);
    return pieces;
}

} // namespace kestrune
