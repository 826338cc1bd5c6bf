#include "app/text_coding.h"

#include <QList>
#include <QStringConverter>
#include <algorithm>
#include <array>

namespace kestrune {

namespace {

// Code points of the bytes 0x80 to 0x9F in Windows-1252; the five unused ones stand for themselves.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString DecodeWindows1252(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char raw : bytes) {
        const auto byte = static_cast<unsigned char>(raw);
        if (byte >= 0x80 && byte <= 0x9F) {
            text.append(QChar(upperControls[byte - 0x80U]));
        } else {
            text.append(QChar(static_cast<char16_t>(byte)));
        }
    }
    return text;
}

QStringDecoder Utf8Decoder() {
    // A byte order mark inside a file is a character of the text, such as that of a file name.
    return QStringDecoder(QStringDecoder::Utf8,
                          QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
}

} // namespace

QByteArray EncodeText(const QString& text) {
    return text.toUtf8();
}

QString DecodeText(QByteArrayView bytes) {
    QStringDecoder decoder = Utf8Decoder();
    QString text = decoder(bytes);
    return decoder.hasError() ? DecodeWindows1252(bytes) : text;
}

bool IsUtf8(QByteArrayView bytes) {
    return bytes.isValidUtf8();
}

qsizetype CharacterCount(const QString& text) {
    qsizetype pairs = 0;
    for (qsizetype i = 1; i < text.size(); ++i) {
        pairs += static_cast<qsizetype>(text[i].isLowSurrogate() && text[i - 1].isHighSurrogate());
    }
    return text.size() - pairs;
}

QString FirstCharacters(const QString& text, qsizetype largest) {
    qsizetype end = 0;
    for (qsizetype count = 0; count < largest && end < text.size(); ++count) {
        const bool isPair =
            text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        end += isPair ? 2 : 1;
    }
    return text.left(end);
}

QByteArray EncodeWindows1252(const QString& text) {
    QByteArray bytes;
    for (const char32_t letter : text.toUcs4()) {
        const auto* const upper = std::find(upperControls.begin(), upperControls.end(), letter);
        if (upper != upperControls.end()) {
            bytes.append(static_cast<char>(0x80 + (upper - upperControls.begin())));
        } else {
            const bool isControl = letter >= 0x80 && letter < 0xA0;
            bytes.append(letter < 0x100 && !isControl ? static_cast<char>(letter) : '?');
        }
    }
    return bytes;
}

QByteArray EncodeUpTo(const QString& text, qsizetype largestBytes) {
    QByteArray bytes = EncodeText(text);
    if (bytes.size() > largestBytes) {
        qsizetype end = largestBytes;
        while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U) {
            --end;
        }
        bytes.truncate(end);
    }
    return bytes;
}

QByteArray EncodeField(const QString& text, int width) {
    return EncodeUpTo(text, width).leftJustified(width, ' ');
}

LineReader::LineReader(QByteArray bytes) : bytes_(std::move(bytes)) {
    if (bytes_.startsWith("\xEF\xBB\xBF")) {
        pos_ = 3;
    }
}

QString LineReader::ReadLine() {
    const qsizetype start = pos_;
    while (pos_ < bytes_.size() && bytes_[pos_] != '\r' && bytes_[pos_] != '\n') {
        ++pos_;
    }
    const qsizetype end = pos_;
    if (pos_ < bytes_.size() && bytes_[pos_] == '\r') {
        ++pos_;
        if (pos_ < bytes_.size() && bytes_[pos_] == '\n') {
            ++pos_;
        }
    } else if (pos_ < bytes_.size()) {
        ++pos_;
    }
    return DecodeText(QByteArrayView(bytes_).sliced(start, end - start));
}

} // namespace kestrune
