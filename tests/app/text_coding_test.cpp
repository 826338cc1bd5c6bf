#include "app/text_coding.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Raw;
using rules::Utf8;

TEST(TextCoding, TextIsWrittenAsUtf8) {
    EXPECT_EQ(Raw(EncodeText(QStringLiteral("Björk"))), "Bj\xC3\xB6rk");
    EXPECT_EQ(Utf8(DecodeText("Bj\xC3\xB6rk")), "Björk");
}

TEST(TextCoding, BytesThatAreNotUtf8AreReadAsWindows1252) {
    EXPECT_EQ(Utf8(DecodeText("Bj\xF6rk")), "Björk");
    EXPECT_EQ(Utf8(DecodeText("\x80 \x93quoted\x94 \x9F")), "€ “quoted” Ÿ");
}

TEST(TextCoding, ACharacterThatTheEndCutsShortIsReadAsWindows1252) {
    EXPECT_EQ(Utf8(DecodeText("caf\xC3")), "cafÃ");
}

TEST(TextCoding, AZeroWidthBlankAtTheStartOfATextStays) {
    const QString name = QString(QChar(0xFEFF)) + QStringLiteral("name");
    EXPECT_EQ(DecodeText(EncodeText(name)), name);
}

TEST(TextCoding, AShortFieldIsPaddedWithBlanks) {
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("ab"), 5)), "ab   ");
    EXPECT_EQ(Raw(EncodeField(QString(), 3)), "   ");
}

TEST(TextCoding, ALongFieldIsCutToItsWidth) {
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("abcdef"), 4)), "abcd");
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("abcd"), 4)), "abcd");
}

TEST(TextCoding, AFieldIsNeverCutInsideACharacter) {
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("abcö"), 4)), "abc ");
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("ab€"), 4)), "ab  ");
    EXPECT_EQ(Raw(EncodeField(QStringLiteral("ab€"), 5)), "ab\xE2\x82\xAC");
    EXPECT_EQ(Raw(EncodeField(QString::fromUtf8("a\xF0\x9F\x8E\xB5"), 4)), "a   ");
}

std::vector<std::string> Lines(const QByteArray& bytes) {
    std::vector<std::string> lines;
    LineReader reader(bytes);
    while (!reader.AtEnd()) {
        lines.push_back(Utf8(reader.ReadLine()));
    }
    return lines;
}

TEST(LineReader, LinesEndInCrLfOrEitherAlone) {
    const std::vector<std::string> expected = {"one", "two", "three", "four"};
    EXPECT_EQ(Lines("one\r\ntwo\nthree\rfour"), expected);
    EXPECT_EQ(Lines("one\r\ntwo\nthree\rfour\r\n"), expected);
}

TEST(LineReader, AnEmptyLineIsALine) {
    EXPECT_EQ(Lines("a\r\n\r\nb\n\nc"), (std::vector<std::string>{"a", "", "b", "", "c"}));
}

TEST(LineReader, AByteOrderMarkAtTheStartIsPassedOver) {
    EXPECT_EQ(Lines("\xEF\xBB\xBF#EXTM3U\r\n"), (std::vector<std::string>{"#EXTM3U"}));
}

TEST(LineReader, AnEmptyTextIsAtItsEndAndReadsEmptyLines) {
    LineReader reader{QByteArray()};
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_TRUE(reader.ReadLine().isEmpty());
    EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, EachLineIsDecodedForItself) {
    EXPECT_EQ(Lines("Bj\xF6rk\nBj\xC3\xB6rk\n"), (std::vector<std::string>{"Björk", "Björk"}));
}

} // namespace
} // namespace kestrune
