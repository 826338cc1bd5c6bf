// The cue points of a WAVE file: their places in one chunk, their texts in a list.
#pragma once

#include "backends/tags/riff_list.h"
#include "components/audio_information.h"

#include <QByteArray>
#include <QList>

namespace kestrune {

// A cue point with the number that joins its place and its texts.
struct NumberedCue {
    quint32 number = 0;
    CuePoint point;
};

// What `cueContent`, of the chunk "cue ", and the list of kind "adtl" tell. Places above 2^31 - 1 are told as
// that.
QList<NumberedCue> ReadCues(const QByteArray& cueContent, const RiffList& texts);

// The content of the chunk "cue " with these points, in this order; what `oldContent` tells of a point beside
// its place stays. Empty without points.
QByteArray ChangedCues(const QByteArray& oldContent, const QList<NumberedCue>& cues);

// Puts the texts and lengths that differ into the list, and takes those of points out that the list of the
// old ones has and the new one has not. All else stays.
void EditCueTexts(RiffList& texts, const QList<NumberedCue>& old, const QList<NumberedCue>& cues);

} // namespace kestrune
