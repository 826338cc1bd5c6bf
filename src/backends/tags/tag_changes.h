// What saving makes of the fields that were set.
#pragma once

#include "components/audio_information.h"

namespace kestrune {

// The fields as they are to be stored, beside those that the file has: no zero characters inside, no numbers
// below 0. Number and text of the genre stand in one place in most kinds; with `oneGenre`, when only one of
// the two was changed and both told the same genre, the other follows.
TagFields Settled(const TagFields& from, TagFields to, bool oneGenre);

// The genre for kinds that hold a text: the text, or else the name of the number.
QString GenreAsText(const TagFields& fields);

// The text of a track number in the place of `stored`, which may tell the number of tracks: "3/12". Empty
// for 0.
QString TrackAsText(qint16 track, const QString& stored);

// Empty for 0.
QString YearAsText(qint32 year);

bool SameFields(const TagFields& a, const TagFields& b);

} // namespace kestrune
