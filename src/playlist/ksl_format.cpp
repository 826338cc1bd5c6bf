#include "playlist/ksl_format.h"

#include "app/text_coding.h"
#include "playlist/playlist_text.h"

#include <QtEndian>
#include <algorithm>

namespace kestrune {

namespace {

struct Span {
    qsizetype offset;
    qsizetype width;
};

constexpr qsizetype recordStep = 1000;
constexpr qsizetype recordBytes = 994;
constexpr Span headerText{9, 50};
constexpr Span titleField{0, 380};
constexpr Span timeField{380, 20};
constexpr Span formatField{400, 197};
constexpr Span typeField{597, 3};
constexpr Span sizeField{600, 20};
constexpr Span folderField{620, 200};
constexpr Span fileNameField{820, 172};
constexpr Span selectedField{992, 2};
const QLatin1String endMark("//");

void Put(QByteArray& record, Span field, const QByteArray& bytes) {
    record.replace(field.offset, field.width, bytes.leftJustified(field.width, ' ', true));
}

void PutText(QByteArray& record, Span field, const QString& text) {
    record.replace(field.offset, field.width, EncodeField(text, static_cast<int>(field.width)));
}

QString TextOf(const QByteArray& record, Span field) {
    return DecodeText(QByteArrayView(record).sliced(field.offset, field.width));
}

QByteArray EmptyFile(int count) {
    QByteArray bytes(headerText.offset + headerText.width, '\0');
    qToLittleEndian<quint16>(static_cast<quint16>(count), bytes.data());
    Put(bytes, headerText, "Kestrune Playlist V5.4 " + QByteArray::number(kslBuild));
    if (count > 0) {
        bytes.append(recordStep * count + recordBytes - bytes.size(), '\0');
    }
    return bytes;
}

QByteArray EncodeRecord(const PlaylistRow& row) {
    QByteArray record(recordBytes, ' ');
    PutText(record, titleField, KillTitleHead(row.fields[RowText]) + endMark);
    PutText(record, timeField, row.fields[SubTime] + endMark);
    PutText(record, formatField, row.fields[SubFormats] + endMark);
    PutText(record, typeField, row.fields[SubType]);
    PutText(record, sizeField, row.fields[SubSize] + endMark);
    PutText(record, folderField, row.fields[SubFolder] + endMark);
    PutText(record, fileNameField, row.fields[SubFileName] + endMark);
    qToLittleEndian<qint16>(row.selected ? -1 : 0, record.data() + selectedField.offset);
    return record;
}

// A record that the file's end cuts short is filled up with zeros.
QByteArray RecordAt(const QByteArray& bytes, int number) {
    QByteArray record = bytes.mid(recordStep * number, recordBytes);
    record.append(recordBytes - record.size(), '\0');
    return record;
}

PlaylistRow DecodeRecord(const QByteArray& record) {
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

int CountOfRecords(const QByteArray& bytes) {
    const qsizetype held = (bytes.size() - 1) / recordStep;
    return static_cast<int>(std::min<qsizetype>(KslCount(bytes), held));
}

} // namespace

QByteArray EncodeKsl(const PlaylistRows& rows) {
    const int count = std::min(rows.Count(), kslLargestCount);
    QByteArray bytes = EmptyFile(count);
    for (int row = 1; row <= count; ++row) {
        const QByteArray record = EncodeRecord(rows.Row(row));
        std::copy(record.begin(), record.end(), bytes.data() + recordStep * row);
    }
    return bytes;
}

int KslCount(const QByteArray& bytes) {
    return bytes.size() < 2 ? 0 : qFromLittleEndian<quint16>(bytes.constData());
}

int KslBuildOf(const QByteArray& bytes) {
    const QByteArray header = bytes.mid(headerText.offset, headerText.width);
    const qsizetype version = header.indexOf("V5.");
    if (version < 0) {
        return 0;
    }
    return static_cast<int>(Val(DecodeText(header.mid(version + 5, 5))));
}

QByteArray ConvertOlderKsl(const QByteArray& bytes) {
    constexpr Span olderFormat{400, 200};
    const int count = CountOfRecords(bytes);
    QByteArray converted = EmptyFile(count);
    for (int number = 1; number <= count; ++number) {
        QByteArray record = RecordAt(bytes, number);
        const QByteArray format = record.mid(olderFormat.offset, formatField.width);
        const QString fileName = KillGang0(TextOf(record, fileNameField));
        Put(record, formatField, format);
        PutText(record, typeField, fileName.right(3).toLower());
        std::copy(record.begin(), record.end(), converted.data() + recordStep * number);
    }
    return converted;
}

std::vector<PlaylistRow> DecodeKsl(const QByteArray& bytes) {
    std::vector<PlaylistRow> rows;
    const int count = CountOfRecords(bytes);
    rows.reserve(static_cast<size_t>(count));
    for (int number = 1; number <= count; ++number) {
        rows.push_back(DecodeRecord(RecordAt(bytes, number)));
        // Neighbours mostly share a folder and a type; one text then serves them all.
        if (number > 1) {
            const PlaylistRow& before = rows[rows.size() - 2];
            for (const RowField field : {SubFolder, SubType, SubFormats}) {
                if (rows.back().fields[field] == before.fields[field]) {
                    rows.back().fields[field] = before.fields[field];
                }
            }
        }
    }
    return rows;
}

} // namespace kestrune
