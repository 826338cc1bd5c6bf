// Files whose names hold a line end: in playlists of lines, they may cost nobody a row.
#include "playlist/text_playlists.h"

#include "playlist/playlist_files_fixture.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::PlaylistFilesTest;
using rules::Raw;
using rules::Texts;
using rules::Utf8;

class LineEndsTest : public PlaylistFilesTest {
protected:
    // Three rows; the name of the second one is given.
    void AddThree(const QString& name) {
        for (const QString& file : {QStringLiteral("a.mp3"), name, QStringLiteral("c.mp3")}) {
            ASSERT_FALSE(list.AddMusic(file, file.left(1)).isEmpty()) << Utf8(file);
            list.admission.AddFiletoList(list.MusicFolder(), file);
        }
        ASSERT_EQ(list.rows.Count(), 3);
    }
    QStringList Paths() const {
        QStringList paths;
        for (int row = 1; row <= list.rows.Count(); ++row) {
            paths.append(list.rows.FullPath(row));
        }
        return paths;
    }
};

TEST_F(LineEndsTest, EveryRowComesBackInEveryFormat) {
    for (const char* name : {"b\nb.mp3", "b\r.mp3", "b\r\nb.mp3", "\n", "b\n#EXTINF:1,x\nc.mp3",
                             "b\n\n\nc.mp3", "b 100%0A\n%C3%B6.mp3", "b\nFile9=x.mp3", "b\n<Entry>.mp3",
                             "b\\\n\\.mp3", "b\xC3\xB6\n\xE6\x97\xA5"}) {
        list.rows.Clear();
        AddThree(QString::fromUtf8(name));
        const QStringList before = Paths();
        for (const char* format : {"l.m3u", "l.pls", "l.asx", "l.ksl"}) {
            const QString file = list.home.Path(QString::fromUtf8(format));
            SaveByDialog(file);
            list.rows.Clear();
            OpenByDialog(file);
            EXPECT_EQ(Paths(), before) << format << ' ' << name;
        }
    }
}

TEST_F(LineEndsTest, ThePathIsWrittenAsAnAddress) {
    PlaylistRows rows;
    rows.Append(rules::MakeRow(1, QStringLiteral("t"), QStringLiteral("01:00"), QStringLiteral("0.0m"),
                               QStringLiteral("/m/Bj\u00F6rk 100%/"), QStringLiteral("a\nb.mp3")));
    const std::string address = "file:///m/Bj%C3%B6rk%20100%25/a%0Ab.mp3";
    EXPECT_EQ(Raw(EncodeM3u(rows)), "#EXTM3U\r\n#EXTINF:60,t\r\n" + address + "\r\n");
    EXPECT_EQ(Raw(EncodePls(rows)), "[playlist]\r\nFile1=" + address +
                                        "\r\nTitle1=t\r\nLength1=60\r\nNumberOfEntries=1\r\nVersion=2\r\n");
    const QByteArray asx = EncodeAsx(rows);
    EXPECT_TRUE(asx.contains("<Ref href = \"file:\\\\\\m\\Bj%C3%B6rk%20100%25\\a%0Ab.mp3\"/>\r\n"))
        << Raw(asx);
}

TEST_F(LineEndsTest, OtherPathsStayAsTheyAre) {
    PlaylistRows rows;
    rows.Append(rules::MakeRow(1, QStringLiteral("t"), QStringLiteral("01:00"), QStringLiteral("0.0m"),
                               QStringLiteral("/m/100%0A/"), QStringLiteral("a b.mp3")));
    EXPECT_TRUE(EncodeM3u(rows).contains("\r\n/m/100%0A/a b.mp3\r\n"));
}

TEST_F(LineEndsTest, OnlyAnAddressWithALineEndInItIsRead) {
    const QString base = QStringLiteral("/lists/");
    EXPECT_EQ(Utf8(ResolveListPath(QStringLiteral("file:///m/a%0Ab%20c.mp3"), base)), "/m/a\nb c.mp3");
    EXPECT_EQ(Utf8(ResolveListPath(QStringLiteral("file:///m/a%0db.mp3"), base)), "/m/a\rb.mp3");
    EXPECT_EQ(Utf8(ResolveListPath(QStringLiteral("file:///m/a%20b.mp3"), base)),
              "/lists/file:///m/a%20b.mp3");
    EXPECT_EQ(Utf8(ResolveListPath(QStringLiteral("/m/a%0Ab.mp3"), base)), "/m/a%0Ab.mp3");
    EXPECT_EQ(Utf8(ResolveListPath(QStringLiteral("a%0Ab.mp3"), base)), "/lists/a%0Ab.mp3");
}

} // namespace
} // namespace kestrune
