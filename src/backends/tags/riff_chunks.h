// The chunks of a WAVE or AIFF file: finding them, and a file with some of them changed.
#pragma once

#include "app/file_pieces.h"
#include "backends/tags/bounded_file.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace kestrune {

// A chunk that stands in the file, or one with new content.
struct RiffChunk {
    QByteArray id;                    // four letters
    qint64 offset = 0;                // of its head, bytes from the start of the file
    qint64 sizeBytes = 0;             // of the content, without padding and never beyond the end of the file
    bool padded = false;              // a byte follows that makes the size even
    bool cut = false;                 // the head does not tell where it ends: it runs to the end of the file
    std::optional<QByteArray> change; // new content instead
};

struct RiffForm {
    QByteArray head; // name, size and kind of the whole
    bool bigEndian = false;
    QList<RiffChunk> chunks;
    qint64 endBytes = 0;  // where the chunks end
    qint64 fileBytes = 0; // behind the chunks there may be bytes that are none
};

inline constexpr qint64 riffHeadBytes = 12;
inline constexpr qint64 chunkHeadBytes = 8;

// The chunks in the order of the file. Empty for other files, for one with thousands of chunks, and for one
// whose sound does not stand among them.
std::optional<RiffForm> ReadRiffForm(BoundedFile& file);

// Content of a chunk, changed or not; what the file's budget does not allow is missing.
QByteArray ChunkContent(BoundedFile& file, const RiffChunk& chunk);

// Index of the first chunk of that name; for lists, of that kind. -1 if there is none.
qsizetype FindChunk(const RiffForm& form, const QByteArray& id);
qsizetype FindList(BoundedFile& file, const RiffForm& form, const QByteArray& kind);

// Adds a chunk at the end, or in front of sound whose end the file does not tell.
void AddChunk(RiffForm& form, const QByteArray& id, const QByteArray& content);

// The file with the chunks as they are in `form` now. Empty above the 4 GiB that sizes can tell.
std::optional<FilePieces> PiecesOf(const RiffForm& form);

// A number as it stands in heads of chunks.
QByteArray FourBytes(quint32 number, bool bigEndian);

} // namespace kestrune
