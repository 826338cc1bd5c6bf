#include "playlist/ksl_format.h"

#include "app/text_coding.h"
#include "playlist/ksl_long_texts.h"
#include "playlist/playlist_text.h"

#include <QtEndian>
#include <algorithm>
#include <array>

namespace kestrune {

namespace {

struct Span {
    qsizetype offset;
    qsizetype width;
};

// A text of a record. The width counts bytes of the record, and characters of the row.
struct TextField {
    RowField row;
    Span span;
    bool hasEndMark;
};

constexpr qsizetype recordStep = 1000;
constexpr qsizetype recordBytes = 994;
constexpr Span headerText{9, 50};
// In the order of the record.
constexpr std::array<TextField, 7> textFields = {{{RowText, {0, 380}, true},
                                                  {SubTime, {380, 20}, true},
                                                  {SubFormats, {400, 197}, true},
                                                  {SubType, {597, 3}, false},
                                                  {SubSize, {600, 20}, true},
                                                  {SubFolder, {620, 200}, true},
                                                  {SubFileName, {820, 172}, true}}};
constexpr Span formatField = textFields[2].span;
constexpr Span typeField = textFields[3].span;
constexpr Span fileNameField = textFields[6].span;
constexpr Span selectedField{992, 2};
const QLatin1String endMark("//");

QByteArray OwnHeader() {
    return ("Kestrune Playlist V5.4 " + QByteArray::number(kslBuild)).leftJustified(headerText.width);
}

void Put(QByteArray& record, Span field, const QByteArray& bytes) {
    record.replace(field.offset, field.width, bytes.leftJustified(field.width, ' ', true));
}

QByteArrayView BytesOf(QByteArrayView record, Span field) {
    return record.sliced(field.offset, field.width);
}

QString TextOf(QByteArrayView record, Span field) {
    return DecodeText(BytesOf(record, field));
}

// In characters.
qsizetype LargestText(const TextField& field) {
    return field.span.width - (field.hasEndMark ? endMark.size() : 0);
}

// What a field gives of the text that stands in it.
QString Given(const TextField& field, const QString& text) {
    if (!field.hasEndMark) {
        return text;
    }
    return field.row == SubFolder ? KillGang0Folder(text) : KillGang0(text);
}

QByteArray EmptyFile(int count) {
    QByteArray bytes(headerText.offset + headerText.width, '\0');
    qToLittleEndian<quint16>(static_cast<quint16>(count), bytes.data());
    Put(bytes, headerText, OwnHeader());
    if (count > 0) {
        bytes.append(recordStep * count + recordBytes - bytes.size(), '\0');
    }
    return bytes;
}

// True if the text has as many bytes as the field or more, but not more characters.
bool IsLong(const QString& text, Span field) {
    constexpr qsizetype mostBytesOfUnit = 3;
    return text.size() * mostBytesOfUnit >= field.width && EncodeText(text).size() >= field.width &&
           CharacterCount(text) <= field.width;
}

// What a field that counts characters gives of the text, padded as it stands there.
QString GivenOfLong(const TextField& field, const QString& text) {
    return field.hasEndMark ? Given(field, text + QString(field.span.width - CharacterCount(text), u' '))
                            : text;
}

// Writes the record of a row. What of it finds no room there is added to the long texts.
void EncodeRecord(const PlaylistRow& row, int number, char* record, std::vector<KslLongText>& longTexts) {
    const size_t before = longTexts.size();
    int fieldNumber = 0;
    for (const TextField& field : textFields) {
        ++fieldNumber;
        QString text = field.row == RowText ? KillTitleHead(row.fields[RowText]) : row.fields[field.row];
        if (field.hasEndMark) {
            text += endMark;
        }
        const QByteArray bytes = EncodeField(text, static_cast<int>(field.span.width));
        std::copy(bytes.begin(), bytes.end(), record + field.span.offset);
        if (IsLong(text, field.span)) {
            const QString given = GivenOfLong(field, text);
            if (given != Given(field, DecodeText(bytes))) {
                longTexts.push_back({number, fieldNumber, EncodeText(given), 0});
            }
        }
    }
    qToLittleEndian<qint16>(row.selected ? -1 : 0, record + selectedField.offset);
    for (size_t i = before; i < longTexts.size(); ++i) {
        longTexts[i].sum = KslTextSum({record, recordBytes}, longTexts[i].utf8);
    }
}

// A record that the file's end cuts short is filled up with zeros.
QByteArray RecordAt(const QByteArray& bytes, int number) {
    QByteArray record = bytes.mid(recordStep * number, recordBytes);
    record.append(recordBytes - record.size(), '\0');
    return record;
}

PlaylistRow DecodeRecord(const QByteArray& record) {
    PlaylistRow row;
    for (const TextField& field : textFields) {
        row.fields[field.row] = Given(field, TextOf(record, field.span));
    }
    row.selected = qFromLittleEndian<qint16>(record.constData() + selectedField.offset) != 0;
    return row;
}

int CountOfRecords(const QByteArray& bytes, qsizetype end) {
    const qsizetype held = (end - 1) / recordStep;
    return static_cast<int>(std::min<qsizetype>(KslCount(bytes), held));
}

QByteArray WithoutPadding(QByteArrayView field) {
    while (field.endsWith(' ')) {
        field.chop(1);
    }
    return field.toByteArray();
}

// True if the text goes on where the record had to break off, which may be inside the end mark.
bool Continues(const KslLongText& longText, const TextField& field, const QByteArray& record) {
    const QByteArray begun = WithoutPadding(BytesOf(record, field.span));
    if (!field.hasEndMark) {
        return longText.utf8.startsWith(begun);
    }
    return Given(field, TextOf(record, field.span)).isEmpty() && (longText.utf8 + "//").startsWith(begun);
}

// True if the text is one that the field gives.
bool IsAsWritten(const KslLongText& longText, const TextField& field) {
    const QString text = DecodeText(longText.utf8);
    if (!IsUtf8(longText.utf8) || CharacterCount(text) > LargestText(field)) {
        return false;
    }
    return !field.hasEndMark || GivenOfLong(field, text + endMark) == text;
}

// Completes the rows. A text that is damaged, or stands for another record, is passed over.
void TakeLongTexts(const QByteArray& bytes, qsizetype at, std::vector<PlaylistRow>& rows) {
    for (const KslLongText& longText : DecodeKslLongTexts(bytes, at)) {
        const bool isKnown = longText.row >= 1 && static_cast<size_t>(longText.row) <= rows.size() &&
                             longText.field >= 1 && static_cast<size_t>(longText.field) <= textFields.size();
        if (!isKnown) {
            continue;
        }
        const TextField& field = textFields[static_cast<size_t>(longText.field - 1)];
        const QByteArray record = RecordAt(bytes, longText.row);
        if (longText.sum == KslTextSum(record, longText.utf8) && Continues(longText, field, record) &&
            IsAsWritten(longText, field)) {
            rows[static_cast<size_t>(longText.row - 1)].fields[field.row] = DecodeText(longText.utf8);
        }
    }
}

// Neighbours mostly share a folder and a type; one text then serves them all.
void ShareTexts(std::vector<PlaylistRow>& rows) {
    for (size_t i = 1; i < rows.size(); ++i) {
        for (const RowField field : {SubFolder, SubType, SubFormats}) {
            if (rows[i].fields[field] == rows[i - 1].fields[field]) {
                rows[i].fields[field] = rows[i - 1].fields[field];
            }
        }
    }
}

} // namespace

QByteArray EncodeKsl(const PlaylistRows& rows) {
    const int count = std::min(rows.Count(), kslLargestCount);
    QByteArray bytes = EmptyFile(count);
    std::vector<KslLongText> longTexts;
    for (int row = 1; row <= count; ++row) {
        EncodeRecord(rows.Row(row), row, bytes.data() + recordStep * row, longTexts);
    }
    return bytes + EncodeKslLongTexts(longTexts, bytes.size());
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
    const int count = CountOfRecords(bytes, bytes.size());
    QByteArray converted = EmptyFile(count);
    for (int number = 1; number <= count; ++number) {
        QByteArray record = RecordAt(bytes, number);
        const QByteArray format = record.mid(olderFormat.offset, formatField.width);
        const QString fileName = KillGang0(TextOf(record, fileNameField));
        Put(record, formatField, format);
        Put(record, typeField, EncodeField(fileName.right(3).toLower(), typeField.width));
        std::copy(record.begin(), record.end(), converted.data() + recordStep * number);
    }
    return converted;
}

std::vector<PlaylistRow> DecodeKsl(const QByteArray& bytes) {
    std::vector<PlaylistRow> rows;
    const qsizetype longTexts = FindKslLongTexts(bytes);
    const int count = CountOfRecords(bytes, longTexts);
    rows.reserve(static_cast<size_t>(count));
    for (int number = 1; number <= count; ++number) {
        rows.push_back(DecodeRecord(RecordAt(bytes, number)));
    }
    TakeLongTexts(bytes, longTexts, rows);
    ShareTexts(rows);
    return rows;
}

bool IsOwnKsl(const QByteArray& bytes) {
    if (bytes.mid(headerText.offset, headerText.width) != OwnHeader()) {
        return false;
    }
    const int count = CountOfRecords(bytes, FindKslLongTexts(bytes));
    for (int number = 1; number <= count; ++number) {
        const QByteArray record = RecordAt(bytes, number);
        const bool isUtf8 = std::all_of(textFields.begin(), textFields.end(), [&](const TextField& field) {
            return IsUtf8(BytesOf(record, field.span));
        });
        if (!isUtf8) {
            return false;
        }
    }
    return true;
}

} // namespace kestrune
