#include "program/prompt_dialogs.h"

#include <gmock/gmock.h>

namespace kestrune {
namespace {

TEST(TypedNames, OneNameIsTakenWhole) {
    EXPECT_EQ(TypedNames(QStringLiteral("my song.mp3"), QStringLiteral("/music")),
              QStringList{QStringLiteral("/music/my song.mp3")});
}

TEST(TypedNames, SeveralNamesStandInQuotationMarks) {
    EXPECT_EQ(TypedNames(QStringLiteral("\"a b.mp3\" \"noext\"  \"/else/c.ogg\""), QStringLiteral("/music")),
              (QStringList{QStringLiteral("/music/a b.mp3"), QStringLiteral("/music/noext"),
                           QStringLiteral("/else/c.ogg")}));
}

TEST(TypedNames, AnEmptyLineNamesNothing) {
    EXPECT_TRUE(TypedNames(QString(), QStringLiteral("/music")).isEmpty());
    EXPECT_TRUE(TypedNames(QStringLiteral("\"\""), QStringLiteral("/music")).isEmpty());
}

} // namespace
} // namespace kestrune
