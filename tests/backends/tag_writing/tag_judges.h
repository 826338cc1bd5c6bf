// What programs that are not this project's say of saved files.
#pragma once

#include "backends/tags/made_files.h"
#include "components/audio_information.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace kestrune {

// Tags as ffprobe names them, in small letters; those of the file before those of its stream.
QHash<QString, QString> TagsByFfprobe(const QString& path);

// Frames as mid3v2 lists them: name to text, several of a name one a line.
QHash<QString, QString> FramesByMutagen(const QString& path);

// Exiftool's value of a tag of a group such as "RIFF:Composer".
QString TagByExiftool(const QString& path, const QString& name);

// A check sum of the coded sound, taken packet by packet; empty after a failure.
QByteArray SoundSum(const QString& path);

// A check sum of the decoded sound, as 16-bit samples; empty after a failure.
QByteArray DecodedSum(const QString& path);

// All thirteen, in Latin-1.
TagFields PlainFields();
// All thirteen, in several scripts and beyond the 16-bit characters.
TagFields UnicodeFields();

// The same in all thirteen; says which one is not.
void ExpectFields(const TagFields& told, const TagFields& wanted);

// Reads a file with an object of its own.
TagFields FieldsOf(const QString& path, TagKind kind = TagKind::Id3v1);

// Saves the fields with an object that need not have read the file, which may be broken.
Outcome SaveBlindly(const QString& path, TagKind kind = TagKind::Id3v1,
                    const TagFields& fields = PlainFields());

// Saves the fields with an object of its own, which read the file before.
Outcome SaveFields(const QString& path, const TagFields& fields, TagKind kind = TagKind::Id3v1);

} // namespace kestrune
