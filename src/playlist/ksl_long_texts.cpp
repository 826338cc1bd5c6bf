#include "playlist/ksl_long_texts.h"

#include <QByteArrayView>
#include <QtEndian>

namespace kestrune {

namespace {

constexpr qsizetype step = 1000;
constexpr qsizetype summedBytes = 992;
constexpr qsizetype headBytes = 8;

// No text of a record begins so: the first byte is none of UTF-8.
constexpr QByteArrayView mark("\xFFKSLTEXT");

void AppendNumber(QByteArray& bytes, int number) {
    bytes.append(static_cast<char>(number & 0xFF));
    bytes.append(static_cast<char>(number >> 8));
}

int NumberAt(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

} // namespace

quint16 KslTextSum(QByteArrayView record, const QByteArray& utf8) {
    return qChecksum(record.first(summedBytes).toByteArray() + utf8, Qt::ChecksumIso3309);
}

QByteArray EncodeKslLongTexts(const std::vector<KslLongText>& texts, qsizetype at) {
    if (texts.empty()) {
        return {};
    }
    QByteArray bytes((step - at % step) % step, '\0');
    bytes.append(mark.toByteArray());
    for (const KslLongText& text : texts) {
        AppendNumber(bytes, text.row);
        AppendNumber(bytes, text.field);
        AppendNumber(bytes, static_cast<int>(text.utf8.size()));
        AppendNumber(bytes, text.sum);
        bytes.append(text.utf8);
    }
    return bytes;
}

qsizetype FindKslLongTexts(const QByteArray& bytes) {
    for (qsizetype at = step; at + mark.size() <= bytes.size(); at += step) {
        if (QByteArrayView(bytes).sliced(at).startsWith(mark)) {
            return at;
        }
    }
    return bytes.size();
}

std::vector<KslLongText> DecodeKslLongTexts(const QByteArray& bytes, qsizetype at) {
    std::vector<KslLongText> texts;
    qsizetype head = at + mark.size();
    while (head + headBytes <= bytes.size()) {
        const qsizetype length = NumberAt(bytes, head + 4);
        const qsizetype next = head + headBytes + length;
        if (next > bytes.size()) {
            break;
        }
        texts.push_back({NumberAt(bytes, head), NumberAt(bytes, head + 2),
                         bytes.mid(head + headBytes, length),
                         static_cast<quint16>(NumberAt(bytes, head + 6))});
        head = next;
    }
    return texts;
}

} // namespace kestrune
