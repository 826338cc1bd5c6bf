// What saving to a WAVE file leaves as it was.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <QFile>

namespace kestrune {

namespace {

class WaveKeeping : public testing::Test {
protected:
    // The file after a title was set in one with these bytes.
    QByteArray Titled(const QByteArray& before, const QString& title = QStringLiteral("Song")) {
        const QString path = made_.Write(QStringLiteral("a.wav"), before);
        TagFields fields = FieldsOf(path);
        fields.title = title;
        EXPECT_EQ(SaveFields(path, fields), Outcome::Ok);
        EXPECT_EQ(FieldsOf(path).title, title);
        return ContentOf(path);
    }

    MadeFiles made_;
};

QByteArray InfoList(const QByteArray& items) {
    return Chunk("LIST", "INFO" + items);
}

TEST_F(WaveKeeping, AListIsPutBehindTheSound) {
    const QByteArray chunks = FormatChunk() + DataChunk();
    EXPECT_EQ(Titled(Wave(chunks)), Wave(chunks + InfoList(Chunk("INAM", QByteArray("Song", 5)))));
}

TEST_F(WaveKeeping, OtherChunksAndItemsStayInAnyOrder) {
    const QByteArray before = Chunk("bext", QByteArray(603, 'b')) +
                              InfoList(Chunk("ISFT", QByteArray("Prog\0", 5)) +
                                       Chunk("INAM", QByteArray("Old\0", 4)) + Chunk("IXYZ", "odd"));
    const QByteArray after = Chunk("bext", QByteArray(603, 'b')) +
                             InfoList(Chunk("ISFT", QByteArray("Prog\0", 5)) +
                                      Chunk("INAM", QByteArray("Song", 5)) + Chunk("IXYZ", "odd"));
    const QByteArray rest =
        FormatChunk() + Chunk("PEAK", "12345") + DataChunk(8001) + Chunk("smpl", QByteArray(36, 's'));
    EXPECT_EQ(Titled(Wave(before + rest)), Wave(after + rest));
}

TEST_F(WaveKeeping, PaddingThatIsMissingOrNotZeroStays) {
    // An odd chunk without padding, one padded with another byte, and an odd end.
    const QByteArray odd = "junk" + Little(3) + "abc";
    const QByteArray marked = "junk" + Little(3) + "abc~";
    const QByteArray sound = "data" + Little(8001) + DataChunk(8001).mid(8, 8001);
    const QByteArray chunks = FormatChunk() + odd + marked + sound;
    EXPECT_EQ(Titled(Wave(chunks)),
              Wave(chunks + QByteArray(1, '\0') + InfoList(Chunk("INAM", QByteArray("Song", 5)))));
}

TEST_F(WaveKeeping, BytesBehindTheChunksStayThere) {
    const QByteArray chunks = FormatChunk() + DataChunk() + Chunk("junk", "1234");
    const QByteArray tail("\x01\x02 of another program", 21);
    EXPECT_EQ(Titled(Wave(chunks) + tail),
              Wave(chunks + InfoList(Chunk("INAM", QByteArray("Song", 5)))) + tail);
}

TEST_F(WaveKeeping, SoundWithoutAnEndStaysTheLast) {
    const QByteArray sound = DataChunk().mid(8);
    const QByteArray open = "data" + Little(0xFFFFFFFF) + sound;
    const QByteArray list = InfoList(Chunk("INAM", QByteArray("Song", 5)));
    EXPECT_EQ(Titled("RIFF" + Little(0xFFFFFFFF) + "WAVE" + FormatChunk() + open),
              "RIFF" + Little(0xFFFFFFFF) + "WAVE" + FormatChunk() + list + open);
}

// The writer told the size now and then, and was killed: what stands behind belongs to the sound.
TEST_F(WaveKeeping, SoundBeyondItsToldEndStaysInOnePiece) {
    const QByteArray all = DataChunk();
    const QByteArray told = "data" + Little(5000) + all.mid(8);
    const QByteArray list = InfoList(Chunk("INAM", QByteArray("Song", 5)));
    const auto size = static_cast<quint32>(4 + FormatChunk().size() + 8 + 5000);
    EXPECT_EQ(Titled("RIFF" + Little(size) + "WAVE" + FormatChunk() + told),
              "RIFF" + Little(size + static_cast<quint32>(list.size())) + "WAVE" + FormatChunk() + list +
                  told);
}

// Writers put the size in last.
TEST_F(WaveKeeping, SoundOfAnInterruptedWriterStaysTheLast) {
    const QByteArray open = "data" + Little(0) + DataChunk().mid(8);
    const QByteArray list = InfoList(Chunk("INAM", QByteArray("Song", 5)));
    for (const quint32 size : {0U, 36U}) {
        const quint32 grown = size == 0 ? 0 : size + static_cast<quint32>(list.size());
        EXPECT_EQ(Titled("RIFF" + Little(size) + "WAVE" + FormatChunk() + open),
                  "RIFF" + Little(grown) + "WAVE" + FormatChunk() + list + open);
    }
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->OpenInfo(made_.Path(QStringLiteral("a.wav"))), Outcome::Ok);
    EXPECT_EQ(info->GetDurationMs(), 1000);
}

TEST_F(WaveKeeping, AnId3ChunkIsKeptInStepWithTheList) {
    MadeFiles made;
    const QByteArray frames = "TIT2" + Big(4) + QByteArray(2, '\0') + QByteArray("\0Old", 4) + "PRIV" +
                              Big(5) + QByteArray(2, '\0') + QByteArray("x\0\xFF\xE0y", 5);
    const QByteArray tag =
        QByteArray("ID3\x03\0\0", 6) + Big(static_cast<quint32>(frames.size()), 4, 7) + frames;
    const QString path =
        made.Write(QStringLiteral("a.wav"), Wave(FormatChunk() + DataChunk() + Chunk("id3 ", tag)));
    EXPECT_EQ(FieldsOf(path).title, QStringLiteral("Old"));
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    ExpectFields(FieldsOf(path), PlainFields());
    EXPECT_EQ(TagByExiftool(path, QStringLiteral("ID3:Title")), QStringLiteral("Song"));
    EXPECT_EQ(TagByExiftool(path, QStringLiteral("RIFF:Title")), QStringLiteral("Song"));
    EXPECT_TRUE(ContentOf(path).contains(QByteArray("x\0\xFF\xE0y", 5)));
}

TEST_F(WaveKeeping, AFileWithAnId3ChunkAloneIsNotTouchedWithoutChanges) {
    const QByteArray frames = "TIT2" + Big(4) + QByteArray(2, '\0') + QByteArray("\0Old", 4) + "TPE1" +
                              Big(5) + QByteArray(2, '\0') + QByteArray("\0Band", 5);
    const QByteArray tag =
        QByteArray("ID3\x03\0\0", 6) + Big(static_cast<quint32>(frames.size()), 4, 7) + frames;
    const QByteArray before = Wave(FormatChunk() + DataChunk() + Chunk("id3 ", tag));
    const QString path = made_.Write(QStringLiteral("id3.wav"), before);
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Old"));
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    EXPECT_EQ(ContentOf(path), before);
    fields.title = QStringLiteral("New");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
    EXPECT_EQ(TagByExiftool(path, QStringLiteral("RIFF:Title")), QStringLiteral("New"));
    EXPECT_EQ(TagByExiftool(path, QStringLiteral("ID3:Title")), QStringLiteral("New"));
    EXPECT_EQ(TagByExiftool(path, QStringLiteral("RIFF:Artist")), QString());
}

QByteArray BareItem(const char* id, const QByteArray& text) {
    return QByteArray(id, 4) + Little(static_cast<quint32>(text.size())) + text;
}

TEST_F(WaveKeeping, ItemsWithoutPaddingKeepTheirNeighbours) {
    const QByteArray items =
        BareItem("INAM", "Odd") + BareItem("IART", "Band!") + BareItem("IPRD", QByteArray("Record\0", 7));
    const auto folk = Chunk("IGNR", QByteArray("Folk\0", 5));
    const QString path =
        made_.Write(QStringLiteral("bare.wav"), Wave(FormatChunk() + InfoList(items) + DataChunk()));
    TagFields fields = FieldsOf(path);
    EXPECT_EQ(fields.title, QStringLiteral("Odd"));
    EXPECT_EQ(fields.artist, QStringLiteral("Band!"));
    EXPECT_EQ(fields.album, QStringLiteral("Record"));
    fields.genreText = QStringLiteral("Folk");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    EXPECT_EQ(ContentOf(path),
              Wave(FormatChunk() + InfoList(items + QByteArray(1, '\0') + folk) + DataChunk()));
    fields.genre = 80; // told by its name
    ExpectFields(FieldsOf(path), fields);
    fields.artist = QStringLiteral("Other");
    ASSERT_EQ(SaveFields(path, fields), Outcome::Ok);
    ExpectFields(FieldsOf(path), fields);
}

TEST_F(WaveKeeping, TextInWindows1252IsReadAndNewTextIsUtf8) {
    const QByteArray list = InfoList(Chunk("IART", QByteArray("Caf\xE9 \x93q\x94\0", 9)));
    const QByteArray after = Titled(Wave(FormatChunk() + DataChunk() + list), QString::fromUtf8("Ärger"));
    EXPECT_TRUE(after.contains(QByteArray("Caf\xE9 \x93q\x94", 8)));
    EXPECT_TRUE(after.contains(QString::fromUtf8("Ärger").toUtf8()));
    EXPECT_EQ(FieldsOf(made_.Path(QStringLiteral("a.wav"))).artist, QString::fromUtf8("Café “q”"));
}

TEST_F(WaveKeeping, AnotherProgramReadsEveryItem) {
    const QString path = made_.Write(QStringLiteral("a.wav"), Wave(FormatChunk() + DataChunk()));
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    const auto told = [&path](const char* name) {
        return TagByExiftool(path, QLatin1String("RIFF:") + QLatin1String(name));
    };
    EXPECT_EQ(told("Title"), QStringLiteral("Song"));
    EXPECT_EQ(told("Artist"), QString::fromUtf8("Café Band"));
    EXPECT_EQ(told("Product"), QStringLiteral("Record"));
    EXPECT_EQ(told("Comment"), QStringLiteral("A remark"));
    EXPECT_EQ(told("Copyright"), QStringLiteral("1998 Label"));
    EXPECT_EQ(told("Genre"), QStringLiteral("Rock"));
    EXPECT_EQ(told("MusicBy"), QStringLiteral("Writer"));
    EXPECT_EQ(told("EncodedBy"), QStringLiteral("Coder"));
    EXPECT_EQ(told("BaseURL"), QStringLiteral("http://example.org/song"));
}

TEST_F(WaveKeeping, FilesThatWouldPassFourGibibytesAreRefused) {
    const quint32 soundBytes = 0xFFFFFFF0U - 44;
    const QByteArray head =
        "RIFF" + Little(soundBytes + 36) + "WAVE" + FormatChunk() + "data" + Little(soundBytes);
    const QString path = made_.Write(QStringLiteral("large.wav"), head);
    ASSERT_EQ(QFile(path).size(), 44);
    ASSERT_TRUE(QFile::resize(path, qint64(soundBytes) + 44)); // takes no room
    EXPECT_EQ(SaveBlindly(path), Outcome::NotSupported);
    EXPECT_EQ(QFile(path).size(), qint64(soundBytes) + 44);
}

TEST_F(WaveKeeping, BrokenSizesAreSafe) {
    const QByteArray good =
        Wave(FormatChunk() + DataChunk() + InfoList(Chunk("INAM", QByteArray("Song", 5))));
    for (qsizetype at = 4; at + 4 <= good.size(); at = at < 52 ? at + 4 : at + 397) {
        for (const quint32 size : {0U, 1U, 0x7FFFFFFFU, 0xFFFFFFFFU, 0x80000001U}) {
            QByteArray broken = good;
            broken.replace(at, 4, Little(size));
            const QString path = made_.Write(QStringLiteral("broken.wav"), broken);
            const Outcome outcome = SaveBlindly(path);
            if (outcome != Outcome::Ok) {
                EXPECT_EQ(ContentOf(path), broken) << at << ' ' << size;
            }
        }
    }
}

} // namespace

} // namespace kestrune
