#include "backends/tag_writing/tag_judges.h"

#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kestrune {

namespace {

void AddTags(QHash<QString, QString>& tags, const QJsonObject& holder) {
    const QJsonObject told = holder.value(QLatin1String("tags")).toObject();
    for (auto tag = told.begin(); tag != told.end(); ++tag) {
        const QString name = tag.key().toLower();
        if (!tags.contains(name)) {
            tags.insert(name, tag.value().toString());
        }
    }
}

} // namespace

QHash<QString, QString> TagsByFfprobe(const QString& path) {
    const auto output = OutputOf(
        QStringLiteral("ffprobe"),
        QStringLiteral("-v error -of json -show_entries format_tags:stream_tags").split(QLatin1Char(' ')) +
            QStringList(path));
    const QJsonObject root = QJsonDocument::fromJson(output.value_or(QByteArray())).object();
    QHash<QString, QString> tags;
    AddTags(tags, root.value(QLatin1String("format")).toObject());
    AddTags(tags, root.value(QLatin1String("streams")).toArray().at(0).toObject());
    return tags;
}

QHash<QString, QString> FramesByMutagen(const QString& path) {
    const auto output =
        OutputOf(QStringLiteral("env"),
                 {QStringLiteral("LC_ALL=C.UTF-8"), QStringLiteral("mid3v2"), QStringLiteral("-l"), path});
    QHash<QString, QString> frames;
    for (const QString& line : QString::fromUtf8(output.value_or(QByteArray())).split(QLatin1Char('\n'))) {
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals > 0 && !line.startsWith(QLatin1String("IDv2"))) {
            QString& text = frames[line.left(equals)];
            text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + line.mid(equals + 1);
        }
    }
    return frames;
}

QString TagByExiftool(const QString& path, const QString& name) {
    const auto output =
        OutputOf(QStringLiteral("exiftool"), {QStringLiteral("-charset"), QStringLiteral("riff=UTF8"),
                                              QStringLiteral("-s3"), QLatin1Char('-') + name, path});
    return QString::fromUtf8(output.value_or(QByteArray())).trimmed();
}

QByteArray SoundSum(const QString& path) {
    return OutputOf(QStringLiteral("ffmpeg"),
                    QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path} +
                        QStringLiteral("-map 0:a -c copy -f streamhash -").split(QLatin1Char(' ')))
        .value_or(QByteArray());
}

QByteArray DecodedSum(const QString& path) {
    return OutputOf(QStringLiteral("ffmpeg"),
                    QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path} +
                        QStringLiteral("-map 0:a -c:a pcm_s16le -f streamhash -").split(QLatin1Char(' ')))
        .value_or(QByteArray());
}

TagFields PlainFields() {
    TagFields fields;
    fields.album = QStringLiteral("Record");
    fields.artist = QString::fromUtf8("Café Band");
    fields.comment = QStringLiteral("A remark");
    fields.copyright = QStringLiteral("1998 Label");
    fields.genre = 17;
    fields.title = QStringLiteral("Song");
    fields.year = 1998;
    fields.url = QStringLiteral("http://example.org/song");
    fields.track = 7;
    fields.encodedBy = QStringLiteral("Coder");
    fields.composer = QStringLiteral("Writer");
    fields.genreText = QStringLiteral("Rock");
    fields.originalArtist = QStringLiteral("First Band");
    return fields;
}

TagFields UnicodeFields() {
    TagFields fields;
    fields.album = QString::fromUtf8("Ωδή στη χαρά");
    fields.artist = QString::fromUtf8("Кино");
    fields.comment = QString::fromUtf8("日本語のコメント");
    fields.copyright = QString::fromUtf8("© 2003 Лейбл");
    fields.title = QString::fromUtf8("𝄞 Ария € “quoted”");
    fields.year = 2003;
    fields.url = QStringLiteral("http://example.net/");
    fields.track = 12;
    fields.encodedBy = QString::fromUtf8("Żółw");
    fields.composer = QString::fromUtf8("Dvořák");
    fields.genreText = QString::fromUtf8("Музыка");
    fields.originalArtist = QString::fromUtf8("שלום");
    return fields;
}

void ExpectFields(const TagFields& told, const TagFields& wanted) {
    EXPECT_EQ(told.album, wanted.album);
    EXPECT_EQ(told.artist, wanted.artist);
    EXPECT_EQ(told.comment, wanted.comment);
    EXPECT_EQ(told.copyright, wanted.copyright);
    EXPECT_EQ(told.genre, wanted.genre);
    EXPECT_EQ(told.title, wanted.title);
    EXPECT_EQ(told.year, wanted.year);
    EXPECT_EQ(told.url, wanted.url);
    EXPECT_EQ(told.track, wanted.track);
    EXPECT_EQ(told.encodedBy, wanted.encodedBy);
    EXPECT_EQ(told.composer, wanted.composer);
    EXPECT_EQ(told.genreText, wanted.genreText);
    EXPECT_EQ(told.originalArtist, wanted.originalArtist);
}

TagFields FieldsOf(const QString& path, TagKind kind) {
    const auto info = MakeAudioInformation();
    info->SetTagVersion(kind);
    EXPECT_EQ(info->ReadTagFromFile(path), Outcome::Ok) << path.toStdString();
    return info->Tag();
}

Outcome SaveBlindly(const QString& path, TagKind kind, const TagFields& fields) {
    const auto info = MakeAudioInformation();
    info->SetTagVersion(kind);
    info->Tag() = fields;
    return info->SaveTagToFile(path);
}

Outcome SaveFields(const QString& path, const TagFields& fields, TagKind kind) {
    const auto info = MakeAudioInformation();
    info->SetTagVersion(kind);
    EXPECT_EQ(info->ReadTagFromFile(path), Outcome::Ok) << path.toStdString();
    info->Tag() = fields;
    return info->SaveTagToFile(path);
}

} // namespace kestrune
