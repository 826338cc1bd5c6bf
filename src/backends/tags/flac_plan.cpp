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

struct FlacBlock {
    unsigned kind = 0;
    QByteArray content;
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
        const qint64 sizeBytes = number & 0xFFFFFFU;
        last = (number >> 24U & lastMark) != 0;
        FlacBlock block{number >> 24U & 0x7FU, file.ReadAt(found.endBytes + headBytes, sizeBytes)};
        if (block.content.size() != sizeBytes) {
            return std::nullopt;
        }
        found.blocks.append(block);
        found.endBytes += headBytes + sizeBytes;
    }
    return found;
}

QByteArray Rendered(const QList<FlacBlock>& blocks) {
    QByteArray bytes = "fLaC";
    for (const FlacBlock& block : blocks) {
        const bool last = &block == &blocks.back();
        QByteArray head(headBytes, Qt::Uninitialized);
        qToBigEndian((block.kind | (last ? lastMark : 0U)) << 24U |
                         static_cast<quint32>(block.content.size()),
                     head.data());
        bytes += head + block.content;
    }
    return bytes;
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
    blocks.insert(1, {commentKind, RenderXiphComments({})});
    return 1;
}

// Padding that is too small for what was added begins anew.
void FitPadding(QList<FlacBlock>& blocks, qint64 grownBytes) {
    const qsizetype at = IndexOf(blocks, paddingKind);
    if (at >= 0) {
        const qint64 left = blocks[at].content.size() - grownBytes;
        blocks[at].content = QByteArray(left < 0 ? spareBytes : std::min(left, mostBlockBytes - 1), '\0');
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
    const qint64 oldBytes = Rendered(found->blocks).size();
    FlacBlock& block = found->blocks[CommentBlockIn(found->blocks)];
    std::optional<XiphComments> comments = ParseXiphComments(block.content);
    if (!comments) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    EditXiphComments(*comments, from, to);
    block.content = RenderXiphComments(*comments);
    if (block.content.size() >= mostBlockBytes) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    FitPadding(found->blocks, Rendered(found->blocks).size() - oldBytes);
    SavePlan plan;
    plan.pieces.emplace();
    plan.pieces->AddBytes(Rendered(found->blocks));
    plan.pieces->AddRange(found->endBytes, file.SizeBytes() - found->endBytes);
    return plan;
}

} // namespace kestrune
