#include "backends/tags/id3_plan.h"

#include "backends/tags/id3v1_block.h"
#include "backends/tags/id3v2_fields.h"
#include "backends/tags/id3v2_frames.h"
#include "backends/tags/tag_changes.h"

namespace kestrune {

namespace {

SavePlan PlanId3v1(BoundedFile& file, const TagFields& to) {
    const qint64 sizeBytes = file.SizeBytes();
    const QByteArray end = file.ReadAt(sizeBytes - id3v1Bytes, id3v1Bytes);
    const bool held = ParseId3v1(end).has_value();
    const QByteArray block = RenderId3v1(held ? end : QByteArray(), to);
    SavePlan plan;
    if (block != (held ? end : QByteArray())) {
        plan.pieces.emplace();
        plan.pieces->AddRange(0, held ? sizeBytes - id3v1Bytes : sizeBytes);
        plan.pieces->AddBytes(block);
    }
    return plan;
}

// True when the head tells of a footer, but sound stands in its place.
bool LacksFooter(const QByteArray& tag) {
    return Id3v2HasFooter(tag) && tag.mid(tag.size() - id3v2HeadBytes, 3) != "3DI";
}

SavePlan PlanId3v2(BoundedFile& file, const TagFields& from, const TagFields& to) {
    qint64 oldBytes = Id3v2SizeOf(file.ReadAt(0, id3v2HeadBytes));
    QByteArray old = oldBytes > 0 ? file.ReadAt(0, oldBytes) : QByteArray();
    if (old.size() != oldBytes) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    if (LacksFooter(old)) {
        oldBytes -= id3v2HeadBytes;
        old.chop(id3v2HeadBytes);
    }
    // A tag that stands elsewhere is hidden by the new one, which then has to tell all.
    const std::optional<QByteArray> tag = ChangedId3v2(old, old.isEmpty() ? TagFields() : from, to);
    if (!tag) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    SavePlan plan;
    if (*tag != old) {
        plan.pieces.emplace();
        plan.pieces->AddBytes(*tag);
        plan.pieces->AddRange(oldBytes, file.SizeBytes() - oldBytes);
    }
    return plan;
}

} // namespace

SavePlan PlanId3(BoundedFile& file, TagKind kind, const TagFields& from, const TagFields& to) {
    file.RenewBudgetForTag();
    return kind == TagKind::Id3v1 ? PlanId3v1(file, to) : PlanId3v2(file, from, to);
}

std::optional<QByteArray> ChangedId3v2(const QByteArray& old, const TagFields& from, const TagFields& to) {
    std::optional<Id3v2Block> block = old.isEmpty() ? Id3v2Block() : ParseId3v2(old);
    if (!block) {
        return std::nullopt;
    }
    if (SameFields(from, to)) {
        return old;
    }
    EditId3v2(*block, from, to);
    return RenderId3v2(*block, old.size());
}

} // namespace kestrune
