#include "backends/tags/chunked_plan.h"

#include "app/text_coding.h"
#include "backends/tags/id3_plan.h"
#include "backends/tags/riff_chunks.h"
#include "backends/tags/riff_info.h"

#include <array>
#include <utility>

namespace kestrune {

namespace {

// A form whose chunks are being changed.
struct Editing {
    BoundedFile& file;
    RiffForm form;
    bool changed = false;

    QByteArray ContentAt(qsizetype at) const {
        return at < 0 ? QByteArray() : ChunkContent(file, form.chunks[at]);
    }

    // False when the file's budget did not allow to read it whole.
    bool IsWhole(qsizetype at, const QByteArray& content) const {
        return at < 0 || content.size() == form.chunks[at].sizeBytes;
    }

    // New content of the chunk at `at`, of a new one if that is -1; the chunk goes if there is none.
    void Put(qsizetype at, const QByteArray& id, const QByteArray& content) {
        if (at >= 0 ? ContentAt(at) == content : content.isEmpty()) {
            return;
        }
        changed = true;
        if (at < 0) {
            AddChunk(form, id, content);
        } else if (content.isEmpty()) {
            form.chunks.removeAt(at);
        } else {
            form.chunks[at].change = content;
        }
    }

    qsizetype FindId3() const {
        for (const char* id : {"ID3 ", "id3 "}) {
            const qsizetype at = FindChunk(form, id);
            if (at >= 0 && !form.chunks[at].cut) {
                return at;
            }
        }
        return -1;
    }
};

RiffList ListAt(const Editing& editing, qsizetype at, const char* kind) {
    RiffList list = ParseRiffList(editing.ContentAt(at));
    list.kind = kind;
    return list;
}

QByteArray Rendered(const RiffList& list) {
    return list.items.isEmpty() && list.rest.isEmpty() ? QByteArray() : RenderRiffList(list);
}

bool PutInfo(Editing& editing, const TagFields& from, const TagFields& to) {
    const qsizetype at = FindList(editing.file, editing.form, "INFO");
    if (!editing.IsWhole(at, editing.ContentAt(at))) {
        return false;
    }
    RiffList info = ListAt(editing, at, "INFO");
    EditInfo(info, from, to);
    editing.Put(at, "LIST", Rendered(info));
    return true;
}

// A file gets such a chunk only if `always`.
bool PutId3(Editing& editing, const TagFields& from, const TagFields& to, bool always) {
    const qsizetype at = editing.FindId3();
    if (at < 0 && !always) {
        return true;
    }
    const QByteArray old = editing.ContentAt(at);
    const std::optional<QByteArray> tag =
        editing.IsWhole(at, old) ? ChangedId3v2(old, old.isEmpty() ? TagFields() : from, to) : std::nullopt;
    if (!tag) {
        return false;
    }
    editing.Put(at, "ID3 ", *tag);
    return true;
}

// Texts that some programs put beside the ID3v2 chunk are kept in step with it.
void PutAiffTexts(Editing& editing, const TagFields& from, const TagFields& to) {
    constexpr std::array texts = {std::pair{"NAME", &TagFields::title}, std::pair{"AUTH", &TagFields::artist},
                                  std::pair{"(c) ", &TagFields::copyright},
                                  std::pair{"ANNO", &TagFields::comment}};
    for (const auto& [id, field] : texts) {
        const qsizetype at = FindChunk(editing.form, id);
        if (at >= 0 && from.*field != to.*field) {
            editing.Put(at, id, EncodeText(to.*field));
        }
    }
}

bool PutCues(Editing& editing, const QList<NumberedCue>& cues) {
    const qsizetype cueAt = FindChunk(editing.form, "cue ");
    const QByteArray oldCues = editing.ContentAt(cueAt);
    const qsizetype textsAt = FindList(editing.file, editing.form, "adtl");
    if (!editing.IsWhole(cueAt, oldCues) || !editing.IsWhole(textsAt, editing.ContentAt(textsAt))) {
        return false;
    }
    RiffList texts = ListAt(editing, textsAt, "adtl");
    const QList<NumberedCue> old = ReadCues(oldCues, texts);
    EditCueTexts(texts, old, cues);
    if (!(cues.isEmpty() && old.isEmpty())) {
        editing.Put(cueAt, "cue ", ChangedCues(oldCues, cues));
        editing.Put(FindList(editing.file, editing.form, "adtl"), "LIST", Rendered(texts));
    }
    return true;
}

std::optional<Editing> Edit(BoundedFile& file) {
    file.RenewBudgetForTag();
    std::optional<RiffForm> form = ReadRiffForm(file);
    file.RenewBudgetForTag();
    return form ? std::make_optional<Editing>({file, *form, false}) : std::nullopt;
}

SavePlan PlanOf(const Editing& editing) {
    if (!editing.changed) {
        return {};
    }
    SavePlan plan;
    plan.pieces = PiecesOf(editing.form);
    return plan.pieces ? plan : SavePlan::Refused(Outcome::NotSupported);
}

} // namespace

TagFields WaveInfoFields(BoundedFile& file) {
    const std::optional<Editing> editing = Edit(file);
    return editing ? InfoFields(ListAt(*editing, FindList(file, editing->form, "INFO"), "INFO"))
                   : TagFields();
}

QList<NumberedCue> WaveCues(BoundedFile& file) {
    const std::optional<Editing> editing = Edit(file);
    if (!editing) {
        return {};
    }
    const RiffList texts = ListAt(*editing, FindList(file, editing->form, "adtl"), "adtl");
    return ReadCues(editing->ContentAt(FindChunk(editing->form, "cue ")), texts);
}

SavePlan PlanWave(BoundedFile& file, const TagFields& from, const TagFields& to,
                  const std::optional<QList<NumberedCue>>& cues) {
    std::optional<Editing> editing = Edit(file);
    if (!editing || !PutInfo(*editing, from, to) || !PutId3(*editing, from, to, false) ||
        (cues && !PutCues(*editing, *cues))) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    return PlanOf(*editing);
}

SavePlan PlanAiff(BoundedFile& file, const TagFields& from, const TagFields& to) {
    std::optional<Editing> editing = Edit(file);
    if (!editing || !PutId3(*editing, from, to, true)) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    PutAiffTexts(*editing, from, to);
    return PlanOf(*editing);
}

} // namespace kestrune
