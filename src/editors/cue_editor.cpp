#include "editors/cue_editor.h"

#include "app/failure_log.h"
#include "editors/number_texts.h"

#include <algorithm>

namespace kestrune {

CueEditor::CueEditor(KSTAudioInformation2& information, QObject* parent)
    : QObject(parent), information_(information) {}

void CueEditor::Load() {
    UpdateRange();
    value_ = minimum_;
    ReadCue();
}

void CueEditor::ShowCue(int index) {
    value_ = index;
    ReadCue();
}

void CueEditor::Add(const CueTexts& texts) {
    const Outcome added = information_.AddCue(
        {NumberPrefix(texts.tPosition), NumberPrefix(texts.tLength), texts.tLabel, texts.tNote, texts.tText});
    PassOver(logEditors, added, "AddCue");
    hasChanged_ = hasChanged_ || added == Outcome::Ok;
    UpdateRange();
    ReadCue();
}

void CueEditor::Update(const CueTexts& texts) {
    hasChanged_ = hasChanged_ || information_.CueCount() > 0;
    information_.Cue().length = NumberPrefix(texts.tLength);
    information_.Cue().label = texts.tLabel;
    information_.Cue().note = texts.tNote;
    information_.Cue().text = texts.tText;
    information_.Cue().position = NumberPrefix(texts.tPosition);
    ReadCue();
}

void CueEditor::Delete() {
    const Outcome deleted = information_.DeleteCue();
    PassOver(logEditors, deleted, "DeleteCue");
    hasChanged_ = hasChanged_ || deleted == Outcome::Ok;
    UpdateRange();
    ReadCue();
}

void CueEditor::UpdateRange() {
    maximum_ = information_.CueCount();
    minimum_ = std::min(1, maximum_);
    value_ = information_.CueIndex();
}

void CueEditor::ReadCue() {
    information_.SetCueIndex(value_);
    const CuePoint& cue = information_.Cue();
    texts_ = {QString::number(cue.position), QString::number(cue.length), cue.label, cue.note, cue.text};
    emit Shown();
}

} // namespace kestrune
