// The reader of native playlists as it was before long texts stood behind the records. It is kept here to the
// letter, so that tests can say what a program of that time makes of a file of today. Not to be mended.
#pragma once

#include "app/text_coding.h"
#include "playlist/ksl_format.h"
#include "playlist/playlist_text.h"

#include <QtEndian>
#include <algorithm>
#include <vector>

namespace kestrune::earlier {

struct Span {
    qsizetype offset;
    qsizetype width;
};

inline constexpr qsizetype recordStep = 1000;
inline constexpr qsizetype recordBytes = 994;
inline constexpr Span titleField{0, 380};
inline constexpr Span timeField{380, 20};
inline constexpr Span formatField{400, 197};
inline constexpr Span typeField{597, 3};
inline constexpr Span sizeField{600, 20};
inline constexpr Span folderField{620, 200};
inline constexpr Span fileNameField{820, 172};
inline constexpr Span selectedField{992, 2};

inline QString TextOf(const QByteArray& record, Span field) {
    return DecodeText(QByteArrayView(record).sliced(field.offset, field.width));
}

inline QByteArray RecordAt(const QByteArray& bytes, int number) {
    QByteArray record = bytes.mid(recordStep * number, recordBytes);
    record.append(recordBytes - record.size(), '\0');
    return record;
}

inline PlaylistRow DecodeRecord(const QByteArray& record) {
    PlaylistRow row;
    row.fields[RowText] = KillGang0(TextOf(record, titleField));
    row.fields[SubTime] = KillGang0(TextOf(record, timeField));
    row.fields[SubType] = TextOf(record, typeField);
    row.fields[SubSize] = KillGang0(TextOf(record, sizeField));
    row.fields[SubFolder] = KillGang0Folder(TextOf(record, folderField));
    row.fields[SubFileName] = KillGang0(TextOf(record, fileNameField));
    row.fields[SubFormats] = KillGang0(TextOf(record, formatField));
    row.selected = qFromLittleEndian<qint16>(record.constData() + selectedField.offset) != 0;
    return row;
}

inline int CountOfRecords(const QByteArray& bytes) {
    const qsizetype held = (bytes.size() - 1) / recordStep;
    return static_cast<int>(std::min<qsizetype>(KslCount(bytes), held));
}

inline std::vector<PlaylistRow> DecodeKsl(const QByteArray& bytes) {
    std::vector<PlaylistRow> rows;
    const int count = CountOfRecords(bytes);
    rows.reserve(static_cast<size_t>(count));
    for (int number = 1; number <= count; ++number) {
        rows.push_back(DecodeRecord(RecordAt(bytes, number)));
    }
    return rows;
}

} // namespace kestrune::earlier
