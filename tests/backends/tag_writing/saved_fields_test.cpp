// Every kind that holds a tag: fields saved and read again, by others too, and the sound untouched.
#include "backends/tag_writing/tag_judges.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <ostream>
#include <utility>

namespace kestrune {

namespace {

struct Kind {
    const char* name;
    const char* options; // of ffmpeg
    TagKind tag = TagKind::Id3v1;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

const Kind kinds[] = {
    {"v2.mp3", "-id3v2_version 0 -b:a 96k", TagKind::Id3v2},
    {"v23.mp3", "-id3v2_version 3 -metadata title=Old -metadata album_artist=Kept", TagKind::Id3v2},
    {"v24.mp3", "-id3v2_version 4 -metadata title=Old -metadata album_artist=Kept", TagKind::Id3v2},
    {"v2.mp2", "-b:a 128k", TagKind::Id3v2},
    {"v2.tta", "", TagKind::Id3v2}, // ffprobe reads no ID3v2 there
    {"a.wav", "-metadata title=Old -metadata album_artist=Kept"},
    {"ima.wav", "-c:a adpcm_ima_wav"},
    {"a.aiff", "-write_id3v2 1 -metadata title=Old -metadata album_artist=Kept"},
    {"bare.aiff", ""},
    {"a.ogg", "-c:a libvorbis -metadata title=Old -metadata album_artist=Kept"},
    {"a.opus", "-c:a libopus -metadata title=Old -metadata album_artist=Kept"},
    {"a.spx", "-c:a libspeex -ar 16000 -ac 1"},
    {"a.oga", "-c:a flac -metadata title=Old"},
    {"a.flac", "-metadata title=Old -metadata album_artist=Kept"},
    {"a.wma", "-metadata title=Old -metadata album_artist=Kept"},
    {"a.m4a", "-metadata title=Old -metadata album_artist=Kept"},
    {"a.wv", "-metadata title=Old -metadata album_artist=Kept"},
};

class SavedFields : public testing::TestWithParam<Kind> {
protected:
    static void SetUpTestSuite() {
        made_ = new MadeFiles;
        QList<std::pair<QString, QStringList>> outputs;
        for (const Kind& kind : kinds) {
            const QString options = QLatin1String("-t 1 -map_metadata -1 ") + QLatin1String(kind.options);
            outputs.append({QLatin1String(kind.name), options.split(QLatin1Char(' '), Qt::SkipEmptyParts)});
        }
        ASSERT_TRUE(made_->EncodeAll(outputs));
    }
    static void TearDownTestSuite() { delete std::exchange(made_, nullptr); }

    // A copy of its own for each test.
    QString Fresh() {
        const QString name = QLatin1String(GetParam().name);
        return copies_.Write(name, ContentOf(made_->Path(name)));
    }
    TagKind Tag() const { return GetParam().tag; }

    static MadeFiles* made_; // shared, since making them takes long
    MadeFiles copies_;
};

MadeFiles* SavedFields::made_ = nullptr;

TEST_P(SavedFields, ComeBackAsTheyWere) {
    const QString path = Fresh();
    for (const TagFields& fields : {PlainFields(), UnicodeFields()}) {
        ASSERT_EQ(SaveFields(path, fields, Tag()), Outcome::Ok);
        ExpectFields(FieldsOf(path, Tag()), fields);
    }
}

TEST_P(SavedFields, AreReadByAnotherProgram) {
    const QString path = Fresh();
    const bool kept = TagsByFfprobe(path).value(QStringLiteral("album_artist")) == QLatin1String("Kept");
    for (const TagFields& fields : {PlainFields(), UnicodeFields()}) {
        ASSERT_EQ(SaveFields(path, fields, Tag()), Outcome::Ok);
        if (path.endsWith(QLatin1String(".tta"))) {
            EXPECT_EQ(FramesByMutagen(path).value(QStringLiteral("TIT2")), fields.title);
            continue;
        }
        const QHash<QString, QString> tags = TagsByFfprobe(path);
        EXPECT_EQ(tags.value(QStringLiteral("title")), fields.title);
        EXPECT_EQ(tags.value(QStringLiteral("artist")), fields.artist);
        EXPECT_EQ(tags.value(QStringLiteral("album")), fields.album);
        EXPECT_EQ(tags.value(QStringLiteral("comment")), fields.comment);
        EXPECT_EQ(tags.value(QStringLiteral("copyright")), fields.copyright);
        EXPECT_EQ(tags.value(QStringLiteral("genre")), fields.genreText);
        const QString year = tags.value(QStringLiteral("year"), tags.value(QStringLiteral("wm/year")));
        const QString date = tags.value(QStringLiteral("date"), year);
        EXPECT_EQ(date, QString::number(fields.year));
        EXPECT_EQ(tags.value(QStringLiteral("track")), QString::number(fields.track));
        EXPECT_EQ(tags.contains(QStringLiteral("album_artist")), kept);
    }
}

TEST_P(SavedFields, LeaveTheSoundAsItIs) {
    const QString path = Fresh();
    const QByteArray before = SoundSum(path);
    ASSERT_FALSE(before.isEmpty());
    ASSERT_EQ(SaveFields(path, UnicodeFields(), Tag()), Outcome::Ok);
    EXPECT_EQ(SoundSum(path), before);
}

TEST_P(SavedFields, GoWhenTheyAreEmpty) {
    const QString path = Fresh();
    ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    ASSERT_EQ(SaveFields(path, TagFields(), Tag()), Outcome::Ok);
    ExpectFields(FieldsOf(path, Tag()), TagFields());
    const QHash<QString, QString> tags = TagsByFfprobe(path);
    for (const char* name :
         {"title", "artist", "album", "comment", "copyright", "genre", "date", "track", "composer"}) {
        EXPECT_FALSE(tags.contains(QLatin1String(name))) << name;
    }
}

TEST_P(SavedFields, DoNotLetTheFileGrow) {
    const QString path = Fresh();
    TagFields other = PlainFields();
    other.title = QStringLiteral("Gong");
    ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    ASSERT_EQ(SaveFields(path, other, Tag()), Outcome::Ok);
    ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    const QByteArray settled = ContentOf(path);
    for (int time = 0; time < 3; ++time) {
        ASSERT_EQ(SaveFields(path, other, Tag()), Outcome::Ok);
        ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
        EXPECT_EQ(ContentOf(path), settled);
    }
}

TEST_P(SavedFields, ThatAreThereAlreadyLeaveTheFileAlone) {
    const QString path = Fresh();
    ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    const QByteArray before = ContentOf(path);
    ASSERT_TRUE(QFile(path).setPermissions(QFile::ReadOwner));
    EXPECT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_EQ(QFile(path).permissions() & QFile::WriteOwner, QFile::Permissions());
}

TEST_P(SavedFields, LeaveNothingBesideTheFile) {
    const QString path = Fresh();
    ASSERT_EQ(SaveFields(path, PlainFields(), Tag()), Outcome::Ok);
    const QDir folder = QFileInfo(path).dir();
    EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden), QStringList(QLatin1String(GetParam().name)));
}

INSTANTIATE_TEST_SUITE_P(Kinds, SavedFields, testing::ValuesIn(kinds),
                         [](const testing::TestParamInfo<Kind>& kind) {
                             std::string name = kind.param.name;
                             name.replace(name.find('.'), 1, "_");
                             return name;
                         });

TEST(SavingMusepack, KeepsTheSound) {
    MadeFiles made;
    const QString path = made.Path(QStringLiteral("a.mpc"));
    ASSERT_TRUE(OutputOf(QStringLiteral("mpcenc"),
                         {QStringLiteral("--silent"), QStringLiteral("--overwrite"), made.Source(), path}));
    const QByteArray before = SoundSum(path);
    for (const TagFields& fields : {PlainFields(), UnicodeFields()}) {
        ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
        ExpectFields(FieldsOf(path), fields);
        EXPECT_EQ(TagsByFfprobe(path).value(QStringLiteral("title")), fields.title);
    }
    EXPECT_EQ(SoundSum(path), before);
}

struct Tagless {
    const char* name;
    const char* options;
};

TEST(SavingToKindsWithoutATag, IsRefusedAndLeavesTheFile) {
    const Tagless tagless[] = {{"a.avi", "-c:a pcm_s16le"},
                               {"a.au", ""},
                               {"rf64.wav", "-rf64 always"},
                               {"a.mkv", "-c:a pcm_s16le"},
                               {"a.ac3", ""}};
    MadeFiles made;
    for (const Tagless& kind : tagless) {
        SCOPED_TRACE(kind.name);
        const QString path =
            made.Encode(QLatin1String(kind.name),
                        QString::fromLatin1(kind.options).split(QLatin1Char(' '), Qt::SkipEmptyParts));
        ASSERT_FALSE(path.isEmpty());
        const QByteArray before = ContentOf(path);
        EXPECT_EQ(SaveFields(path, PlainFields()), Outcome::NotSupported);
        EXPECT_EQ(ContentOf(path), before);
    }
    for (const char* name : {"a.vox", "a.gsm", "a.raw", "a.pcm", "a.g721", "a.g726"}) {
        const QByteArray before(3300, '\x35');
        const QString path = made.Write(QLatin1String(name), before);
        EXPECT_EQ(SaveFields(path, PlainFields()), Outcome::NotSupported) << name;
        EXPECT_EQ(ContentOf(path), before) << name;
    }
}

} // namespace

} // namespace kestrune
