// The program's own playlist format. Little-endian; text fields padded with blanks:
//
//   0      count of rows, 16 bits
//   9      header text, 50 bytes: "Kestrune Playlist V5.4 50410"
//   1000 i record of row i, from 1: 994 bytes, 6 bytes unused
//
// A record: title 380, time 20, format 197, type 3 (without end mark), size 20, folder 200, file name 172,
// selected 2 (0 or -1). All texts but the type end in "//". Older files hold no type and a format of 200
// bytes. The widths count characters; a text of so many characters, but of more bytes, stands behind the
// records too (ksl_long_texts.h). Pure functions that take any bytes; any thread.
#pragma once

#include "playlist/playlist_rows.h"

#include <QByteArray>
#include <vector>

namespace kestrune {

inline constexpr int kslBuild = 50410;
// The count has 16 bits, so a longer list keeps its first rows only.
inline constexpr int kslLargestCount = 65535;

QByteArray EncodeKsl(const PlaylistRows& rows);

// Number of rows that the file says it has, 0 for anything shorter than a header.
int KslCount(const QByteArray& bytes);
// Build number of the program that wrote the file; 0 if the header does not tell.
int KslBuildOf(const QByteArray& bytes);
// False for a file that a save would not only bring up to date but turn into another form: one of another
// build, or with texts in another coding than UTF-8.
bool IsOwnKsl(const QByteArray& bytes);
// The file in the present layout.
QByteArray ConvertOlderKsl(const QByteArray& bytes);
// The rows of a file in the present layout. Their texts have no number and point in front yet. Records that
// begin behind the end of the file are left out. Texts behind the records that are damaged, or belong to
// other records, change nothing.
std::vector<PlaylistRow> DecodeKsl(const QByteArray& bytes);

} // namespace kestrune
