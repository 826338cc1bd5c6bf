#include "convert/con_path.h"
#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune::convert {
namespace {

using rules::Folder;
using rules::Raw;
using rules::Utf8;

QByteArray Text(const QByteArray& text) {
    QByteArray bytes;
    bytes.append(static_cast<char>(text.size() & 0xFF));
    bytes.append(static_cast<char>(text.size() >> 8));
    return bytes + text;
}

TEST(ConPath, IsThreeTextsBehindTheirLengths) {
    const ConPathRecord record{"/in", "/output", "/rip"};
    const QByteArray bytes = EncodeConPath(record, {});
    EXPECT_EQ(Raw(bytes), std::string("\x03\0/in\x07\0/output\x04\0/rip", 20));
    const ConPathRecord read = DecodeConPath(bytes);
    EXPECT_EQ(Raw(read.inputFolder), "/in");
    EXPECT_EQ(Raw(read.outputFolder), "/output");
    EXPECT_EQ(Raw(read.ripFolder), "/rip");
}

TEST(ConPath, LengthTakesBothBytes) {
    const QByteArray longText(300, 'a');
    const QByteArray bytes = EncodeConPath({longText, "b", "c"}, {});
    EXPECT_EQ(Raw(bytes.left(2)), std::string("\x2C\x01", 2));
    EXPECT_EQ(DecodeConPath(bytes).inputFolder, longText);
    EXPECT_EQ(Raw(DecodeConPath(bytes).outputFolder), "b");
}

TEST(ConPath, AShorterRecordLeavesTheOldTail) {
    const QByteArray old = EncodeConPath({"/a/long/input", "/a/long/output", "/a/long/rip"}, {});
    const QByteArray bytes = EncodeConPath({"/i", "/o", "/r"}, old);
    EXPECT_EQ(bytes.size(), old.size());
    EXPECT_EQ(Raw(bytes.left(12)), std::string("\x02\0/i\x02\0/o\x02\0/r", 12));
    EXPECT_EQ(Raw(bytes.mid(12)), Raw(old.mid(12)));
    EXPECT_EQ(Raw(DecodeConPath(bytes).ripFolder), "/r");
}

TEST(ConPath, TruncatedFileReadsAsFarAsItGoes) {
    const QByteArray whole = EncodeConPath({"/in", "/out", "/rip"}, {});
    for (qsizetype size = 0; size < whole.size(); ++size) {
        const ConPathRecord read = DecodeConPath(whole.left(size));
        EXPECT_TRUE(QByteArray("/in").startsWith(read.inputFolder)) << size;
        EXPECT_TRUE(QByteArray("/out").startsWith(read.outputFolder)) << size;
        EXPECT_TRUE(QByteArray("/rip").startsWith(read.ripFolder)) << size;
    }
    EXPECT_EQ(Raw(DecodeConPath(whole.left(5)).inputFolder), "/in");
    EXPECT_EQ(Raw(DecodeConPath(whole.left(6)).outputFolder), "");
}

TEST(ConPath, LengthBeyondTheEndTakesWhatIsThere) {
    const ConPathRecord read = DecodeConPath(QByteArray("\xFF\xFF/abc", 6));
    EXPECT_EQ(Raw(read.inputFolder), "/abc");
    EXPECT_TRUE(read.outputFolder.isEmpty());
    EXPECT_TRUE(read.ripFolder.isEmpty());
}

TEST(ConPath, BytesOfAnotherCodingAreKept) {
    const QByteArray old = Text("/in") + Text("/out") + Text("/m\xFCsik");
    const ConPathRecord record = DecodeConPath(old);
    EXPECT_EQ(EncodeConPath(record, old), old);
}

TEST(ConPath, ATextTooLongIsCutBetweenCharacters) {
    QByteArray text;
    while (text.size() < 70000) {
        text += "\xC3\xBC";
    }
    const ConPathRecord read = DecodeConPath(EncodeConPath({"/" + text, "/out", {}}, {}));
    EXPECT_EQ(read.inputFolder.size(), 65535);
    EXPECT_EQ(Raw(read.inputFolder.right(2)), "\xC3\xBC");
    EXPECT_EQ(DecodeConPath(EncodeConPath({text, "/out", {}}, {})).inputFolder.size(), 65534);
    EXPECT_EQ(Raw(read.outputFolder), "/out");
}

TEST(ConPath, IsFoundInEitherSpelling) {
    const Folder folder;
    EXPECT_EQ(Utf8(ConPathFile(folder.Path())), Utf8(folder.Path(QStringLiteral("ConPath.dat"))));
    folder.Write(QStringLiteral("Conpath.dat"), "x");
    EXPECT_EQ(Utf8(ConPathFile(folder.Path())), Utf8(folder.Path(QStringLiteral("Conpath.dat"))));
}

} // namespace
} // namespace kestrune::convert
