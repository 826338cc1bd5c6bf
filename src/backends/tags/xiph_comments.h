// The list of comments in Ogg and FLAC files.
#pragma once

#include "components/audio_information.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace kestrune {

// Comments as they stand, each "NAME=text"; what nobody changes is written as it was read
// (xiph.org: Ogg Vorbis I format specification, comment field and header specification).
struct XiphComments {
    QByteArray vendor;
    QList<QByteArray> entries;
    QByteArray rest; // what follows the list
};

// Empty if the bytes are cut.
std::optional<XiphComments> ParseXiphComments(const QByteArray& bytes);
QByteArray RenderXiphComments(const XiphComments& comments);

// Puts the fields that differ from `from`, which the list tells now, into it. A changed comment keeps its
// place and the spelling of its name; others of that name go.
void EditXiphComments(XiphComments& comments, const TagFields& from, const TagFields& to);

} // namespace kestrune
