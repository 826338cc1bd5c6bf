#include "convert/con_path.h"

#include "app/paths.h"
#include "app/text_coding.h"

#include <QtEndian>

namespace kestrune {

namespace {

constexpr qsizetype lengthBytes = 2;
constexpr qsizetype largestText = 0xFFFF;

// The text at `offset`, which then stands behind it.
QByteArray TakeText(const QByteArray& bytes, qsizetype& offset) {
    if (offset + lengthBytes > bytes.size()) {
        offset = bytes.size();
        return {};
    }
    const qsizetype length = qFromLittleEndian<quint16>(bytes.constData() + offset);
    QByteArray text = bytes.mid(offset + lengthBytes, length);
    offset += lengthBytes + text.size();
    return text;
}

void AppendText(QByteArray& bytes, const QByteArray& text) {
    // Only a text from elsewhere can be too long, and only one that holds bytes of no known coding then
    // comes back as others.
    const QByteArray stored = text.size() <= largestText ? text : EncodeUpTo(DecodeText(text), largestText);
    const auto length = qToLittleEndian(static_cast<quint16>(stored.size()));
    bytes.append(reinterpret_cast<const char*>(&length), lengthBytes);
    bytes.append(stored);
}

} // namespace

ConPathRecord DecodeConPath(const QByteArray& bytes) {
    ConPathRecord record;
    qsizetype offset = 0;
    record.inputFolder = TakeText(bytes, offset);
    record.outputFolder = TakeText(bytes, offset);
    record.ripFolder = TakeText(bytes, offset);
    return record;
}

QByteArray EncodeConPath(const ConPathRecord& record, const QByteArray& oldBytes) {
    QByteArray bytes;
    AppendText(bytes, record.inputFolder);
    AppendText(bytes, record.outputFolder);
    AppendText(bytes, record.ripFolder);
    bytes.append(oldBytes.mid(bytes.size()));
    return bytes;
}

QString ConPathFile(const QString& appPath) {
    return OwnFile(appPath, QStringLiteral("ConPath.dat"));
}

} // namespace kestrune
