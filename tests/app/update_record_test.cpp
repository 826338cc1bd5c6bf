#include "app/update_record.h"

#include "support/rule_support.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;

constexpr int recordOffset = 29999; // byte position 30000, counted from 1

TEST(UpdateRecord, AMissingFileReadsAsZeros) {
    const Folder folder;
    const UpdateRecord record = ReadUpdateRecord(folder.Path(QStringLiteral("associateupdate.src")));
    EXPECT_FALSE(record.AutoCheck);
    EXPECT_EQ(record.FirstRunDone, 0);
}

TEST(UpdateRecord, AFileThatEndsInsideTheRecordReadsZerosBehindIt) {
    const Folder folder;
    const QString file =
        folder.Write(QStringLiteral("a"), QByteArray(recordOffset, 'x') + QByteArray("\xFF\xFF\x01", 3));
    const UpdateRecord record = ReadUpdateRecord(file);
    EXPECT_TRUE(record.AutoCheck);
    EXPECT_EQ(record.FirstRunDone, 1);
}

TEST(UpdateRecord, StandsAtByteThirtyThousandWithTheCheckFirst) {
    const Folder folder;
    const QString file = folder.Path(QStringLiteral("associateupdate.src"));
    UpdateRecord record;
    record.AutoCheck = true;
    record.FirstRunDone = 1;
    ASSERT_TRUE(WriteUpdateRecord(file, record));
    EXPECT_EQ(Content(file), std::string(recordOffset, '\0') + std::string("\xFF\xFF\x01\x00", 4));

    record.AutoCheck = false;
    ASSERT_TRUE(WriteUpdateRecord(file, record));
    EXPECT_EQ(Content(file), std::string(recordOffset, '\0') + std::string("\x00\x00\x01\x00", 4));
}

TEST(UpdateRecord, TheOtherBytesOfTheFileStay) {
    const Folder folder;
    const QString file = folder.Write(QStringLiteral("a"), QByteArray(recordOffset, 'a') + "1234" + "behind");
    UpdateRecord record;
    record.FirstRunDone = 1;
    ASSERT_TRUE(WriteUpdateRecord(file, record));
    EXPECT_EQ(Content(file),
              std::string(recordOffset, 'a') + std::string("\x00\x00\x01\x00", 4) + std::string("behind"));
}

TEST(UpdateRecord, WhatIsWrittenIsReadBack) {
    const Folder folder;
    const QString file = folder.Path(QStringLiteral("a"));
    for (const bool autoCheck : {false, true}) {
        for (const qint16 done : {0, 1, -1}) {
            ASSERT_TRUE(WriteUpdateRecord(file, {autoCheck, done}));
            EXPECT_EQ(ReadUpdateRecord(file).AutoCheck, autoCheck);
            EXPECT_EQ(ReadUpdateRecord(file).FirstRunDone, done);
        }
    }
}

TEST(UpdateRecord, AFileThatCannotBeReplacedIsToldByTheResult) {
    const Folder folder;
    const QString file = folder.Path(QStringLiteral("a"));
    ASSERT_TRUE(QDir().mkpath(file));
    EXPECT_FALSE(WriteUpdateRecord(file, {}));
    EXPECT_TRUE(QDir(file).exists());
}

} // namespace
} // namespace kestrune
