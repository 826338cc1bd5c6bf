// What the cue list does: it pages through the cue points of the file that is open.
#pragma once

#include "components/audio_information.h"

#include <QObject>
#include <QString>

namespace kestrune {

// What stands in the text boxes of a cue point.
struct CueTexts {
    QString tPosition; // a number in sample frames
    QString tLength;   // the same
    QString tLabel;
    QString tNote;
    QString tText;
};

// Holds no list of its own: everything is read from the object and written to it at once. Saving the file is
// the tag editor's matter. Text in a number box counts as the number that it begins with, or 0. Call order:
// Load first. Window thread.
class CueEditor : public QObject {
    Q_OBJECT
public:
    // The object must outlive it and have read a file.
    explicit CueEditor(KSTAudioInformation2& information, QObject* parent = nullptr);

    // Shows the first cue.
    void Load();
    // The up-down went to a value, 1-based; what stands in the boxes and was not written is gone.
    void ShowCue(int index);
    // Appends a cue with these texts and shows it.
    void Add(const CueTexts& texts);
    // Writes these texts to the current cue and shows it.
    void Update(const CueTexts& texts);
    // Removes the current cue.
    void Delete();

    // Of the up-down; all 0 while there are no cues.
    int Minimum() const { return minimum_; }
    int Maximum() const { return maximum_; }
    int Value() const { return value_; }
    const CueTexts& Texts() const { return texts_; }
    // A cue was added, written or removed since the making.
    bool HasChanged() const { return hasChanged_; }

signals:
    // Range, value and texts are to be shown anew.
    void Shown();

private:
    void UpdateRange();
    void ReadCue();

    KSTAudioInformation2& information_;
    int minimum_ = 0;
    int maximum_ = 0;
    int value_ = 0;
    CueTexts texts_;
    bool hasChanged_ = false;
};

} // namespace kestrune
