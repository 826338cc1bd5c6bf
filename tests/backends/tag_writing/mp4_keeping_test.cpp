// What saving leaves in MP4 files: every item that nobody changed, and the sound, in fragments too.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace kestrune {

namespace {

QByteArray Atom(const QByteArray& name, const QByteArray& content) {
    return Big(static_cast<quint32>(content.size()) + 8) + name + content;
}

QByteArray Data(quint32 kind, const QByteArray& value) {
    return Atom("data", Big(kind) + Big(0) + value);
}

QByteArray FreeItem(const QByteArray& name, const QByteArray& data) {
    return Atom("----", Atom("mean", Big(0) + "com.apple.iTunes") + Atom("name", Big(0) + name) + data);
}

// Of all sorts, as players and shops write them.
QByteArray ItemsBehindTheTitle() {
    const QByteArray png = QByteArray("\x89PNG") + QByteArray(200, 'p');
    const QByteArray jpeg = QByteArray("\xFF\xD8\xFF") + QByteArray(300, 'j');
    return Atom("\251ART", Data(1, "One") + Data(1, "Two")) + Atom("gnre", Data(0, Big(18, 2))) +
           Atom("covr", Data(14, png) + Data(13, jpeg)) + Atom("tmpo", Data(21, Big(120, 2))) +
           Atom("cpil", Data(21, Big(1, 1))) + Atom("plID", Data(21, Big(7) + Big(9))) +
           Atom("disk", Data(0, Big(1) + Big(2 << 16, 4))) + Atom("soal", Data(1, "Sorted")) +
           Atom("xxxx", Data(99, QByteArray("\0\1\2", 3))) +
           FreeItem("MIX", Data(1, "text") + Data(0, QByteArray("\1\2\3", 3)) + Data(21, Big(7))) +
           FreeItem("cprt", Data(1, "not the copyright"));
}

class Mp4Keeping : public testing::Test {
protected:
    QString Encoded(const char* name, const QString& options) {
        return made_.Encode(QLatin1String(name), options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    // The tag in front of a file's other parts or behind them, without room.
    QString WithItems(const QByteArray& items) {
        QByteArray file =
            ContentOf(Encoded("plain.m4a", QStringLiteral("-map_metadata -1 -fflags +bitexact")));
        const qsizetype moov = file.indexOf("moov") - 4;
        const qsizetype old = file.indexOf("udta", moov) - 4;
        const auto oldBytes = old < moov ? 0 : static_cast<qsizetype>(NumberAt(file, old));
        const QByteArray handler = Atom("hdlr", QByteArray(8, '\0') + "mdirappl" + QByteArray(9, '\0'));
        const QByteArray udta = Atom("udta", Atom("meta", Big(0) + handler + Atom("ilst", items)));
        EXPECT_TRUE(old < moov || old + oldBytes == file.size());
        file = file.left(old < moov ? file.size() : old) + udta;
        file.replace(moov, 4, Big(static_cast<quint32>(file.size() - moov)));
        return made_.Write(QStringLiteral("items.m4a"), file);
    }
    static quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
        quint32 number = 0;
        for (qsizetype digit = at; digit < at + 4; ++digit) {
            number = number << 8U | static_cast<unsigned char>(bytes[digit]);
        }
        return number;
    }

    // The content of the list of items.
    static QByteArray ItemsOf(const QString& path) {
        const QByteArray file = ContentOf(path);
        const qsizetype at = file.indexOf("ilst") - 4;
        return file.mid(at + 8, NumberAt(file, at) - 8);
    }

    MadeFiles made_;
};

TEST_F(Mp4Keeping, OtherItemsStayByteForByte) {
    const QByteArray others = ItemsBehindTheTitle();
    const QString path = WithItems(Atom("\251nam", Data(1, "Old")) + others);
    const QByteArray sound = DecodedSum(path);
    ASSERT_FALSE(sound.isEmpty());
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Old"));
    EXPECT_EQ(fields.artist, QStringLiteral("One, Two"));
    EXPECT_EQ(fields.genre, 17);
    EXPECT_EQ(fields.genreText, QStringLiteral("Rock"));
    // Longer than the room, then into it, then all of it.
    for (const QString& title : {QString(2000, u'n'), QStringLiteral("Newer"), QStringLiteral("New")}) {
        fields.title = title;
        ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
        ExpectFields(FieldsOf(path), fields);
        EXPECT_EQ(ItemsOf(path), Atom("\251nam", Data(1, title.toUtf8())) + others);
        EXPECT_EQ(DecodedSum(path), sound);
    }
}

TEST_F(Mp4Keeping, AChangedItemKeepsItsPlace) {
    const QByteArray before = Atom("trkn", Data(0, Big(3) + Big(9 << 16))) +
                              Atom("gnre", Data(0, Big(18, 2))) + FreeItem("URL", Data(1, "http://old/")) +
                              Atom("cpil", Data(21, Big(1, 1)));
    const QString path = WithItems(before);
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.track, 3);
    EXPECT_EQ(fields.url, QStringLiteral("http://old/"));
    fields.track = 4;
    fields.url = QStringLiteral("http://new/");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
    EXPECT_EQ(ItemsOf(path), Atom("trkn", Data(0, Big(4) + Big(9 << 16))) +
                                 Atom("gnre", Data(0, Big(18, 2))) + FreeItem("URL", Data(1, "http://new/")) +
                                 Atom("cpil", Data(21, Big(1, 1))));
    fields.genre = 9;
    fields.track = 0;
    fields.url.clear();
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    EXPECT_EQ(ItemsOf(path), Atom("cpil", Data(21, Big(1, 1))) + Atom("\251gen", Data(1, "Metal")));
}

struct Layout {
    const char* name;
    const char* options;
};

void PrintTo(const Layout& layout, std::ostream* out) {
    *out << layout.name;
}

class Mp4Layouts : public testing::TestWithParam<Layout> {};

TEST_P(Mp4Layouts, KeepTheSoundWithAndWithoutRoom) {
    MadeFiles made;
    const QString options =
        QLatin1String("-c:a aac -metadata title=Old ") + QLatin1String(GetParam().options);
    const QString path = made.Encode(QStringLiteral("a.m4a"), options.split(QLatin1Char(' ')));
    const QByteArray sound = DecodedSum(path);
    const QByteArray packets = SoundSum(path);
    ASSERT_FALSE(packets.isEmpty());
    TagFields fields = UnicodeFields();
    for (const int length : {3, 5000, 10}) {
        fields.comment = QString(length, u'c');
        ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
        ExpectFields(FieldsOf(path), fields);
        EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("comment")), fields.comment);
        EXPECT_EQ(DecodedSum(path), sound);
        EXPECT_EQ(SoundSum(path), packets);
    }
}

const Layout layouts[] = {
    {"HeadBehind", "-t 2"},
    {"HeadInFront", "-t 2 -movflags faststart"},
    {"Fragments", "-f mp4 -movflags frag_keyframe+empty_moov -frag_duration 300000"},
    {"FragmentsCountedFromTheirOwnPlace",
     "-f mp4 -movflags frag_keyframe+empty_moov+default_base_moof -frag_duration 300000"},
    {"FragmentsBehindAFirstPart", "-f mp4 -movflags frag_keyframe -frag_duration 300000"},
    {"FragmentsWithAnIndex",
     "-f mp4 -movflags frag_keyframe+empty_moov+global_sidx+default_base_moof -frag_duration 300000"},
    {"Dash", "-f mp4 -movflags dash+empty_moov+frag_keyframe -frag_duration 300000"},
    {"QuickTime", "-t 2 -f mov"},
};

INSTANTIATE_TEST_SUITE_P(Kinds, Mp4Layouts, testing::ValuesIn(layouts),
                         [](const testing::TestParamInfo<Layout>& layout) { return layout.param.name; });

// The table at the end tells where each fragment begins.
TEST_F(Mp4Keeping, TheTableOfFragmentsIsToldAnew) {
    const QString path = Encoded(
        "f.m4a", QStringLiteral("-c:a aac -f mp4 -movflags frag_keyframe+empty_moov -frag_duration 300000"));
    TagFields fields = FieldsOf(path);
    fields.comment = QString(3000, u'c');
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    const QByteArray file = ContentOf(path);
    const qsizetype table = file.indexOf("tfra") + 4;
    ASSERT_GT(table, 4);
    const bool wide = file[table] == 1;
    const quint32 count = NumberAt(file, table + 12);
    ASSERT_GT(count, 3U);
    for (quint32 at = 0; at < count; ++at) {
        const qsizetype entry = table + 16 + at * (wide ? 19 : 11);
        const quint32 place = NumberAt(file, entry + (wide ? 12 : 4));
        EXPECT_EQ(file.mid(place + 4, 4), "moof") << at;
    }
}

TEST_F(Mp4Keeping, WhatIsNotUnderstoodIsRefusedAndStays) {
    const QByteArray good = ContentOf(WithItems(Atom("\251nam", Data(1, "Old")) + ItemsBehindTheTitle()));
    const auto refused = [this](const QByteArray& bytes) {
        const QString path = made_.Write(QStringLiteral("odd.m4a"), bytes);
        TagFields fields = PlainFields();
        fields.comment = QString(3000, u'c');
        const Outcome outcome = SaveFields(path, fields);
        EXPECT_EQ(ContentOf(path), bytes);
        return outcome;
    };
    QByteArray otherHandler = good;
    otherHandler.replace("mdir", "mdta");
    EXPECT_EQ(refused(otherHandler), Outcome::NotSupported);
    QByteArray brokenItem = good;
    brokenItem.replace(good.indexOf("gnre") - 4, 4, Big(0x7FFFFFFF));
    EXPECT_EQ(refused(brokenItem), Outcome::NotSupported);
}

} // namespace

} // namespace kestrune
