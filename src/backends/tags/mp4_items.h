// The editor's fields in the list of items of an MP4 file.
#pragma once

#include "components/audio_information.h"

#include <QByteArray>

#include <optional>

namespace kestrune {

// The content of an "ilst" atom with the fields that differ from `from`, which the file tells now. All other
// items stay byte for byte. Empty if the content is no list of items.
std::optional<QByteArray> ChangedMp4Items(const QByteArray& items, const TagFields& from,
                                          const TagFields& to);

// The number of the genre, if the list tells it by number and not by name; noGenre else.
qint16 Mp4GenreNumber(const QByteArray& items);

} // namespace kestrune
