#include "backends/tags/genre_names.h"

#include "backends/tags/made_files.h"

#include <gtest/gtest.h>

#include <QSet>

namespace kestrune {

namespace {

TEST(GenreNames, AgreeWithTheListOfAnEncoder) {
    const auto output =
        OutputOf(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("lame --genre-list 2>&1")});
    ASSERT_TRUE(output);
    // The encoder spells these its own way.
    const QSet<int> otherSpelling = {64, 85, 133, 136};
    int compared = 0;
    for (const QByteArray& line : output->split('\n')) {
        const QByteArray trimmed = line.trimmed();
        const qsizetype blank = trimmed.indexOf(' ');
        if (blank <= 0) {
            continue;
        }
        const int number = trimmed.left(blank).toInt();
        if (!otherSpelling.contains(number)) {
            EXPECT_EQ(NameOfGenre(static_cast<qint16>(number)).toUtf8(), trimmed.mid(blank + 1)) << number;
            ++compared;
        }
    }
    EXPECT_EQ(compared, genreCount - otherSpelling.size());
}

TEST(GenreNames, EveryNameLeadsBackToItsNumber) {
    for (qint16 number = 0; number < genreCount; ++number) {
        EXPECT_EQ(GenreOfText(NameOfGenre(number)), number);
    }
}

TEST(GenreNames, TextOfANumberIsThatNumber) {
    EXPECT_EQ(GenreOfText(QStringLiteral("17")), 17);
    EXPECT_EQ(GenreOfText(QStringLiteral("(17)")), 17);
    EXPECT_EQ(GenreOfText(QStringLiteral("148")), noGenre);
    EXPECT_EQ(GenreOfText(QStringLiteral("-1")), noGenre);
}

TEST(GenreNames, OtherTextIsNone) {
    EXPECT_EQ(GenreOfText(QString()), noGenre);
    EXPECT_EQ(GenreOfText(QStringLiteral("Music for Lifts")), noGenre);
    EXPECT_EQ(GenreOfText(QStringLiteral(" hip-HOP ")), 7);
}

} // namespace

} // namespace kestrune
