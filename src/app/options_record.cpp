#include "app/options_record.h"

#include "app/text_coding.h"

#include <QtEndian>
#include <bit>
#include <cmath>

namespace kestrune {

namespace {

constexpr qsizetype bandsOffset = 3;
constexpr qsizetype useDefaultOffset = 51;
constexpr qsizetype itemsOffset = 53;
constexpr qsizetype pathLengthOffset = 67;
constexpr qsizetype pathOffset = 69;
constexpr qsizetype largestWithoutColumns = 54;

quint8 ByteAt(const QByteArray& bytes, qsizetype offset) {
    return offset < bytes.size() ? static_cast<quint8>(bytes[offset]) : 0;
}

quint16 WordAt(const QByteArray& bytes, qsizetype offset) {
    return static_cast<quint16>(ByteAt(bytes, offset) | (ByteAt(bytes, offset + 1) << 8U));
}

float FloatAt(const QByteArray& bytes, qsizetype offset) {
    const quint32 low = WordAt(bytes, offset);
    const quint32 high = WordAt(bytes, offset + 2);
    const auto value = std::bit_cast<float>(low | (high << 16U));
    return std::isfinite(value) ? value : 0.0F;
}

void AppendWord(QByteArray& bytes, quint16 value) {
    bytes.append(static_cast<char>(value & 0xFFU));
    bytes.append(static_cast<char>(value >> 8U));
}

void AppendBoolean(QByteArray& bytes, bool value) {
    AppendWord(bytes, value ? 0xFFFF : 0);
}

void AppendFloat(QByteArray& bytes, float value) {
    const auto bits = std::bit_cast<quint32>(value);
    AppendWord(bytes, static_cast<quint16>(bits & 0xFFFFU));
    AppendWord(bytes, static_cast<quint16>(bits >> 16U));
}

} // namespace

OptionsRecord DecodeOptions(const QByteArray& bytes) {
    OptionsRecord record;
    record.FftType = ByteAt(bytes, 0);
    record.FftResolution = ByteAt(bytes, 1);
    record.PlayMode = ByteAt(bytes, 2);
    for (size_t i = 0; i < record.EqBand.size(); ++i) {
        record.EqBand[i] = FloatAt(bytes, bandsOffset + 4 * static_cast<qsizetype>(i));
    }
    record.UseDefaultOnStartup = WordAt(bytes, useDefaultOffset) != 0;
    for (size_t i = 0; i < record.Items.size(); ++i) {
        record.Items[i] = WordAt(bytes, itemsOffset + 2 * static_cast<qsizetype>(i)) != 0;
    }
    const qsizetype length = WordAt(bytes, pathLengthOffset);
    record.CurPath = DecodeText(QByteArrayView(bytes.mid(pathOffset, length)));
    return record;
}

bool HoldsColumns(const QByteArray& bytes) {
    return bytes.size() > largestWithoutColumns;
}

QByteArray EncodeOptions(const OptionsRecord& record, const QByteArray& oldBytes) {
    QByteArray bytes;
    bytes.append(static_cast<char>(record.FftType));
    bytes.append(static_cast<char>(record.FftResolution));
    bytes.append(static_cast<char>(record.PlayMode));
    for (const float band : record.EqBand) {
        AppendFloat(bytes, band);
    }
    AppendBoolean(bytes, record.UseDefaultOnStartup);
    for (const bool item : record.Items) {
        AppendBoolean(bytes, item);
    }
    const QByteArray path = EncodeUpTo(record.CurPath, 0xFFFF);
    AppendWord(bytes, static_cast<quint16>(path.size()));
    bytes.append(path);
    bytes.append(oldBytes.mid(bytes.size()));
    return bytes;
}

} // namespace kestrune
