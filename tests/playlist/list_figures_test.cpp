// Figures in the list stand under each other whatever their digits are.
#include "playlist_view_fixture.h"
#include "skin/tabular_text.h"

namespace kestrune {
namespace {

class ListFiguresTest : public PlaylistViewTest {
protected:
    void Append(const QString& text, const QString& time, const QString& size) {
        PlaylistRow row;
        row.fields[RowText] = text;
        row.fields[SubTime] = time;
        row.fields[SubSize] = size;
        rows.Append(row);
    }
    // The last column of pixels with ink in this part of a row.
    int LastInk(const QImage& picture, int row, int left, int right) {
        const QRect line = list.RowRect(row);
        for (int x = right - 1; x >= left; --x) {
            for (int y = line.top() + 2; y < line.bottom() - 1; ++y) {
                if (picture.pixelColor(x, y).lightness() > 90) {
                    return x;
                }
            }
        }
        return -1;
    }
};

TEST_F(ListFiguresTest, TitlesTimesAndSizesStandUnderEachOther) {
    // The rim of the glass lies over the first row.
    for (const char* number : {"1", "1", "2", "4", "11", "10", "44"}) {
        // The letter behind the digits tells where they end.
        const QString digits = QString::fromLatin1(number).repeated(2).left(2);
        Append(QLatin1String(number) + QStringLiteral(".I"), digits + u':' + digits + u'I',
               digits + QStringLiteral(".0I"));
    }
    const int last = rows.Count();
    Fill(40);
    Show();
    list.SetColumns({165, 60, 0, 60, 0, 0, 0, 0});
    ASSERT_EQ(last, list.VisibleRows());
    const QImage picture = Picture();
    ASSERT_GT(LastInk(picture, 2, 0, 160), 10);
    for (int row = 3; row <= last; ++row) {
        EXPECT_EQ(LastInk(picture, row, 0, 160), LastInk(picture, 2, 0, 160)) << row;
        EXPECT_EQ(LastInk(picture, row, 165, 224), LastInk(picture, 2, 165, 224)) << row;
        EXPECT_EQ(LastInk(picture, row, 225, 284), LastInk(picture, 2, 225, 284)) << row;
    }
}

TEST(TabularText, DigitsAreOfOneWidth) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(11);
    const TabularText tabular(font);
    QFont bold = font;
    bold.setBold(true);
    for (const char* digits : {"111", "444", "808"}) {
        EXPECT_DOUBLE_EQ(tabular.Width(QLatin1String(digits), font),
                         tabular.Width(QStringLiteral("000"), font));
        EXPECT_DOUBLE_EQ(tabular.Width(QLatin1String(digits), bold),
                         tabular.Width(QStringLiteral("000"), font));
    }
    EXPECT_DOUBLE_EQ(tabular.Width(QStringLiteral("m"), font),
                     QFontMetricsF(font).horizontalAdvance(QStringLiteral("m")));
}

TEST(TabularText, IsCutWhereTheRoomEnds) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(11);
    const TabularText tabular(font);
    const QString text = QStringLiteral("12:34");
    const double whole = tabular.Width(text, font);
    EXPECT_EQ(tabular.Elided(text, font, whole), text);
    const QString cut = tabular.Elided(text, font, whole - 1);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_LE(tabular.Width(cut, font), whole - 1);
    EXPECT_EQ(tabular.Elided(text, font, 1), QString(QChar(0x2026)));
}

} // namespace
} // namespace kestrune
