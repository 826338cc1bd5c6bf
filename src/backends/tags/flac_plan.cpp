#include "backends/tags/flac_plan.h"

#include "backends/tags/id3v1_block.h"
#include "backends/tags/tag_changes.h"
#include "backends/tags/xiph_comments.h"

#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint64 signatureBytes = 4;
constexpr qint64 headBytes = 4; // kind and mark of the last one, then three bytes of size
constexpr qint64 mostBlockBytes = 1 << 24;
constexpr qint64 spareBytes = 1024;
constexpr unsigned lastMark = 0x80;
constexpr unsigned paddingKind = 1;
constexpr unsigned commentKind = 4;

// A block as it stands in the file, or one with new content.
struct FlacBlock {
    unsigned kind = 0;
    qint64 offset = 0; // of the content, bytes from the start of the file
    qint64 sizeBytes = 0;
    std::optional<QByteArray> change;

    qint64 ContentBytes() const { return change ? change->size() : sizeBytes; }
};

struct FlacBlocks {
    QList<FlacBlock> blocks;
    qint64 endBytes = 0; // where the sound begins
};

std::optional<FlacBlocks> ReadBlocks(BoundedFile& file) {
    FlacBlocks found;
    found.endBytes = signatureBytes;
    for (bool last = false; !last;) {
        const QByteArray head = file.ReadAt(found.endBytes, headBytes);
        if (head.size() < headBytes) {
            return std::nullopt;
        }
        const quint32 number = qFromBigEndian<quint32>(head.constData());
        last = (number >> 24U & lastMark) != 0;
        const FlacBlock block{number >> 24U & 0x7FU, found.endBytes + headBytes, number & 0xFFFFFFU, {}};
        found.endBytes = block.offset + block.sizeBytes;
        if (found.endBytes > file.SizeBytes()) {
            return std::nullopt;
        }
        found.blocks.append(block);
    }
    return found;
}

qint64 SizeOf(const QList<FlacBlock>& blocks) {
    qint64 bytes = signatureBytes;
    for (const FlacBlock& block : blocks) {
        bytes += headBytes + block.ContentBytes();
    }
    return bytes;
}

FilePieces Rendered(const QList<FlacBlock>& blocks) {
    FilePieces pieces;
    pieces.AddBytes("fLaC");
    for (const FlacBlock& block : blocks) {
        const bool last = &block == &blocks.back();
        QByteArray head(headBytes, Qt::Uninitialized);
        qToBigEndian((block.kind | (last ? lastMark : 0U)) << 24U |
                         static_cast<quint32>(block.ContentBytes()),
                     head.data());
        pieces.AddBytes(head);
        if (block.change) {
            pieces.AddBytes(*block.change);
        } else {
            pieces.AddRange(block.offset, block.sizeBytes);
        }
    }
    return pieces;
}

qsizetype IndexOf(const QList<FlacBlock>& blocks, unsigned kind) {
    const auto found = std::find_if(blocks.begin(), blocks.end(),
                                    [kind](const FlacBlock& block) { return block.kind == kind; });
    return found == blocks.end() ? -1 : found - blocks.begin();
}

// Behind the first block, which tells about the stream.
qsizetype CommentBlockIn(QList<FlacBlock>& blocks) {
    const qsizetype at = IndexOf(blocks, commentKind);
    if (at >= 0) {
        return at;
    }
    blocks.insert(1, {commentKind, 0, 0, RenderXiphComments({})});
    return 1;
}

// Padding that is too small for what was added begins anew.
void FitPadding(QList<FlacBlock>& blocks, qint64 grownBytes) {
    const qsizetype at = IndexOf(blocks, paddingKind);
    if (at >= 0) {
        const qint64 left = blocks[at].sizeBytes - grownBytes;
        blocks[at].change = QByteArray(left < 0 ? spareBytes : std::min(left, mostBlockBytes - 1), '\0');
    }
}

} // namespace

bool IsPlainFlac(BoundedFile& file) {
    const qint64 end = file.SizeBytes() - id3v1Bytes;
    return file.ReadAt(0, signatureBytes) == "fLaC" && file.ReadAt(end, 3) != "TAG";
}

SavePlan PlanFlac(BoundedFile& file, const TagFields& from, const TagFields& to) {
    file.RenewBudget();
    if (SameFields(from, to)) {
        return {};
    }
    std::optional<FlacBlocks> found = ReadBlocks(file);
    if (!found) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    const qint64 oldBytes = SizeOf(found->blocks);
    FlacBlock& block = found->blocks[CommentBlockIn(found->blocks)];
    const QByteArray old = block.change ? *block.change : file.ReadAt(block.offset, block.sizeBytes);
    std::optional<XiphComments> comments = ParseXiphComments(old);
    if (!comments) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    EditXiphComments(*comments, from, to);
    block.change = RenderXiphComments(*comments);
    if (block.change->size() >= mostBlockBytes) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    FitPadding(found->blocks, SizeOf(found->blocks) - oldBytes);
    SavePlan plan;
    plan.pieces = Rendered(found->blocks);
    plan.pieces->AddRange(found->endBytes, file.SizeBytes() - found->endBytes);
    return plan;
}

} // namespace kestrune
