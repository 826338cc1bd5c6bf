// Files as killed writers, full disks and interrupted downloads leave them: a save keeps the sound, as
// another program decodes it, or refuses and leaves the file.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrune {

namespace {

struct Maker {
    const char* name;
    const char* command; // with % for the source and @ for the file
};

void PrintTo(const Maker& maker, std::ostream* out) {
    *out << maker.name;
}

const Maker makers[] = {
    {"a.wav", "sox % @"},
    {"pipe.wav", "sh -c ffmpeg|-v|error|-i|%|-f|wav|-|>@"},
    {"rf64.wav", "ffmpeg -v error -i % -rf64 always @"},
    {"a.aiff", "sox % @"},
    {"a.mp3", "lame --quiet -b 128 % @"},
    {"vbr.mp3", "lame --quiet -V 4 --tt Old --add-id3v2 % @"},
    {"a.mp2", "twolame --quiet -b 192 % @"},
    {"a.ogg", "oggenc -Q -t Old -o @ %"},
    {"a.opus", "ffmpeg -v error -i % -c:a libopus @"},
    {"a.oga", "ffmpeg -v error -i % -c:a flac @"},
    {"a.flac", "ffmpeg -v error -i % -metadata title=Old @"},
    {"a.mpc", "mpcenc --silent % @"},
    {"a.wv", "ffmpeg -v error -i % @"},
    {"a.tta", "ffmpeg -v error -i % @"},
    {"a.wma", "ffmpeg -v error -i % -metadata title=Old @"},
    {"fast.m4a", "ffmpeg -v error -i % -movflags faststart @"},
    {"frag.m4a", "ffmpeg -v error -i % -f mp4 -movflags frag_keyframe+empty_moov -frag_duration 300000 @"},
};

class CrashStates : public testing::TestWithParam<Maker> {
protected:
    QByteArray Whole() {
        const QString path = made_.Path(QLatin1String("whole-") + QLatin1String(GetParam().name));
        const QString command =
            QString::fromLatin1(GetParam().command).replace(u'%', made_.Source()).replace(u'@', path);
        QStringList words = command.split(u' ');
        if (words.front() == QLatin1String("sh")) {
            words.back().replace(u'|', u' ');
        }
        EXPECT_TRUE(OutputOf(words.takeFirst(), words)) << command.toStdString();
        return ContentOf(path);
    }

    QList<TagKind> Kinds() const {
        const QByteArray name = GetParam().name;
        const bool holdsTwo = name.endsWith("mp3") || name.endsWith("mp2") || name.endsWith("tta");
        return holdsTwo ? QList<TagKind>{TagKind::Id3v1, TagKind::Id3v2} : QList<TagKind>{TagKind::Id3v1};
    }

    // With each kind of tag, short and long.
    void ExpectKept(const QByteArray& before) {
        for (const TagKind kind : Kinds()) {
            for (const int length : {10, 5000}) {
                const QString path = made_.Write(QLatin1String(GetParam().name), before);
                const QByteArray sound = DecodedSum(path);
                TagFields fields = PlainFields();
                fields.comment = QString(length, u'c');
                const auto outcome = SaveBlindly(path, kind, fields);
                if (outcome == Outcome::Ok) {
                    ++saved_;
                    EXPECT_TRUE(DecodedSum(path) == sound);
                } else {
                    EXPECT_TRUE(ContentOf(path) == before);
                }
            }
        }
    }

    MadeFiles made_;
    int saved_ = 0;
};

TEST_P(CrashStates, KeepTheSoundOrRefuse) {
    const QByteArray whole = Whole();
    ASSERT_GT(whole.size(), 1000);
    for (const qint64 percent : {100, 90, 50}) {
        SCOPED_TRACE(percent);
        ExpectKept(whole.left(whole.size() * percent / 100));
    }
    ExpectKept(whole.left(whole.size() - 30));
    const bool holdsTag = QByteArray(GetParam().name) != "rf64.wav";
    EXPECT_EQ(saved_ >= 2, holdsTag);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CrashStates, testing::ValuesIn(makers),
                         [](const testing::TestParamInfo<Maker>& maker) {
                             std::string name = maker.param.name;
                             name.replace(name.find('.'), 1, "_");
                             return name;
                         });

// Sizes that writers leave who put them in at the end, or now and then.
TEST(CrashStatesOfWave, KeepTheSound) {
    MadeFiles made;
    const QByteArray whole = ContentOf(made.Source());
    const qsizetype dataSizeAt = whole.indexOf("data") + 4;
    for (const quint32 size : {0U, 100000U, 0x7FFFF000U, 0x80000000U, 0xFFFFFFFFU}) {
        for (const quint32 riffSize : {0U, 36U, size + 36U, 0xFFFFFFFFU}) {
            SCOPED_TRACE(testing::Message() << size << ' ' << riffSize);
            QByteArray before = whole;
            before.replace(4, 4, Little(riffSize)).replace(dataSizeAt, 4, Little(size));
            const QString path = made.Write(QStringLiteral("a.wav"), before);
            const QByteArray sound = DecodedSum(path);
            ASSERT_FALSE(sound.isEmpty());
            ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
            ExpectFields(FieldsOf(path), PlainFields());
            EXPECT_EQ(DecodedSum(path), sound);
            EXPECT_TRUE(ContentOf(path).endsWith(whole.mid(dataSizeAt + 4 + 100000)));
        }
    }
}

} // namespace

} // namespace kestrune
