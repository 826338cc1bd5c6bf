// The playlist formats of other players: M3U, PLS and ASX (with WAX and WVX). Line scanners, as forgiving and
// as strict as described at each; lines that they write end in CR LF. Pure functions that take any bytes; any
// thread.
#pragma once

#include "playlist/playlist_rows.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace kestrune {

struct ListEntry {
    QString path; // as the playlist holds it
    QString title;
    qint64 seconds = 0;      // 0 if not told
    qint64 bytes = 0;        // 0 if not told
    bool isFullPath = false; // the path is not one below the folder of the playlist
};

struct ParsedList {
    bool isValid = true; // false: the first line is not that of the format
    std::vector<ListEntry> entries;
};

// An entry is a line that begins with "#EXTINF:" and the line behind it; other lines are passed over. A file
// of one line is valid whatever it says, and empty.
ParsedList ParseM3u(const QByteArray& bytes);
// Entries are groups of three lines, File, Title and Length in this order, counted from the second line of
// the file. A group that differs is dropped whole; one that ends with the file is lost.
ParsedList ParsePls(const QByteArray& bytes);
// Tags begin in the first column and are spelled with one certain blank. Paths lose what follows their first
// "/", since the format parts folders by backslashes.
ParsedList ParseAsx(const QByteArray& bytes);

QByteArray EncodeM3u(const PlaylistRows& rows);
QByteArray EncodePls(const PlaylistRows& rows);
QByteArray EncodeAsx(const PlaylistRows& rows);

// A path of a playlist with backslashes turned into separators, if it holds no separator. The writers put a
// path with a line end in it as "file://" and the path with its bytes as %0A and the like; that is read back
// here.
QString NativeListPath(const QString& path);

// Full path of a playlist's entry. `baseFolder` is the folder of the playlist and ends in a separator. A path
// with a drive stays as it is, one that begins with a separator is absolute, any other lies below the base
// folder. The path is made native first.
QString ResolveListPath(const QString& path, const QString& baseFolder);

} // namespace kestrune
