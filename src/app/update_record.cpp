#include "app/update_record.h"

#include "app/safe_file.h"

#include <QtEndian>

namespace kestrune {

namespace {
constexpr qsizetype recordOffset = 29999;
constexpr qsizetype recordBytes = 4;
} // namespace

UpdateRecord ReadUpdateRecord(const QString& file) {
    QByteArray bytes = ReadWholeFile(file).mid(recordOffset, recordBytes);
    bytes.append(recordBytes - bytes.size(), '\0');
    UpdateRecord record;
    record.AutoCheck = qFromLittleEndian<qint16>(bytes.constData()) != 0;
    record.FirstRunDone = qFromLittleEndian<qint16>(bytes.constData() + 2);
    return record;
}

bool WriteUpdateRecord(const QString& file, const UpdateRecord& record) {
    QByteArray bytes = ReadWholeFile(file);
    if (bytes.size() < recordOffset + recordBytes) {
        bytes.append(recordOffset + recordBytes - bytes.size(), '\0');
    }
    qToLittleEndian<qint16>(record.AutoCheck ? -1 : 0, bytes.data() + recordOffset);
    qToLittleEndian<qint16>(record.FirstRunDone, bytes.data() + recordOffset + 2);
    return ReplaceFile(file, bytes);
}

} // namespace kestrune
