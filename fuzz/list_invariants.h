// What holds for every playlist of another program, whatever its bytes are.
#pragma once

#include "fuzz_support.h"
#include "playlist/playlist_rows.h"
#include "playlist/playlist_text.h"
#include "playlist/text_playlists.h"

#include <limits>

namespace kestrune::fuzz {

inline void CheckEntry(const ListEntry& entry) {
    Holds(entry.seconds >= 0 && entry.seconds <= std::numeric_limits<qint16>::max(), "seconds fit 16 bits");
    Holds(entry.bytes >= 0 && entry.bytes <= std::numeric_limits<qint32>::max(), "bytes fit 32 bits");
    QString folder;
    QString name;
    SplitPath(ResolveListPath(entry.path, QStringLiteral("/lists/")), folder, name);
    Holds(folder.endsWith(u'/'), "a folder ends in a separator");
    Holds(!folder.contains(QLatin1String("//")), "a folder can be stored");
    Holds(!name.contains(u'/'), "a name holds no separator");
}

// Rows of the entries as they stand, without their files.
inline void FillRows(PlaylistRows& rows, const ParsedList& list) {
    for (const ListEntry& entry : list.entries) {
        PlaylistRow row;
        row.fields[RowText] = QString::number(rows.Count() + 1) + u'.' + entry.title;
        row.fields[SubTime] = FormatMinutes(entry.seconds);
        row.fields[SubFolder] = entry.path;
        rows.Append(std::move(row));
    }
}

using Parser = ParsedList (*)(const QByteArray&);
using Writer = QByteArray (*)(const PlaylistRows&);

// Reads, writes what was read, and reads that; gives both lists, of the same length.
inline std::pair<ParsedList, ParsedList> ReadTwice(const QByteArray& bytes, Parser parse, Writer write) {
    const ParsedList first = parse(bytes);
    Holds(first.isValid || first.entries.empty(), "an invalid list has no entries");
    PlaylistRows rows;
    FillRows(rows, first);
    const ParsedList second = parse(write(rows));
    Holds(second.isValid, "what the writer writes is valid");
    Holds(second.entries.size() == first.entries.size(), "no entry is lost or added");
    for (const ListEntry& entry : first.entries) {
        CheckEntry(entry);
    }
    return {first, second};
}

// For the formats that carry all that was read.
inline void CheckStable(const QByteArray& bytes, Parser parse, Writer write) {
    const auto [first, second] = ReadTwice(bytes, parse, write);
    for (size_t i = 0; i < first.entries.size(); ++i) {
        Holds(first.entries[i].path == second.entries[i].path, "the path comes back");
        Holds(first.entries[i].title == second.entries[i].title, "the title comes back");
        Holds(first.entries[i].seconds == second.entries[i].seconds, "the seconds come back");
    }
}

} // namespace kestrune::fuzz
