// A save that is killed, refused or out of room leaves the old file or the new one.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <functional>
#include <random>

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr int nobody = 65534;

QStringList FilesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

class SavingSafety : public testing::Test {
protected:
    QString Mp3() {
        return made_.Encode(
            QStringLiteral("a.mp3"),
            QStringLiteral("-id3v2_version 3 -write_id3v1 1 -metadata title=Old").split(QLatin1Char(' ')));
    }
    // Alone in a folder of its own.
    QString Alone(const QString& name, const QByteArray& content) {
        QDir(made_.Path({})).mkpath(QStringLiteral("alone"));
        return made_.Write(QLatin1String("alone/") + name, content);
    }
    QString Folder() const { return made_.Path(QStringLiteral("alone")); }

    // Runs the saver with a limit of its own; its exit code, -1 if it crashed.
    static int RunSaver(const QStringList& arguments, const std::function<void()>& limit = {}) {
        QProcess saver;
        if (limit) {
            saver.setChildProcessModifier(limit);
        }
        saver.start(QStringLiteral(KESTRUNE_TAG_SAVER), arguments);
        if (!saver.waitForFinished(30000) || saver.exitStatus() != QProcess::NormalExit) {
            return -1;
        }
        return saver.exitCode();
    }

    MadeFiles made_;
};

// For a child process: no file may become longer.
void LimitFiles(qint64 bytes) {
    const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
}

// The most memory that the process had at a time since it last began to count.
qint64 HighestMemoryBytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray text = status.readAll();
    const QByteArray mark = "VmHWM:";
    const QByteArray line = text.mid(text.indexOf(mark) + mark.size()).split('\n').first().simplified();
    EXPECT_TRUE(line.endsWith(" kB")) << line.constData();
    return line.chopped(3).toLongLong() * 1024;
}

void CountMemoryAnew() {
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    EXPECT_TRUE(reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && reset.write("5") == 1);
}

// Saves of two tags take turns until the saver is killed, at moments spread over them.
void KillSavers(const QString& path, const char* kind, int times) {
    std::mt19937 random(20031);
    std::uniform_int_distribution<int> moment(0, 12000);
    std::uniform_int_distribution<int> saves(1, 4);
    const QByteArray sound = ContentOf(path).right(40000).left(30000);
    int oldOnes = 0;
    for (int time = 0; time < times; ++time) {
        QProcess saver;
        saver.start(QStringLiteral(KESTRUNE_TAG_SAVER), {path, QLatin1String(kind)});
        ASSERT_TRUE(saver.waitForStarted());
        // Some have one tag behind them then, some the other, however slow the machine is.
        QByteArray told;
        for (const int wanted = saves(random); told.count('\n') < wanted;) {
            ASSERT_TRUE(saver.waitForReadyRead(10000));
            told += saver.readAllStandardOutput();
        }
        QThread::usleep(static_cast<unsigned long>(moment(random)));
        ::kill(static_cast<pid_t>(saver.processId()), SIGKILL);
        ASSERT_TRUE(saver.waitForFinished(10000));
        ASSERT_EQ(saver.exitStatus(), QProcess::CrashExit);

        const QByteArray content = ContentOf(path);
        ASSERT_TRUE(content.contains(sound)) << time;
        const QString title = FieldsOf(path, static_cast<TagKind>(kind[0] - '0')).title;
        const QString even = QLatin1String("Title ") + QStringLiteral("even").repeated(400);
        ASSERT_TRUE(title == QLatin1String("Title odd") || even.startsWith(title)) << title.toStdString();
        oldOnes += title == QLatin1String("Title odd") ? 1 : 0;
    }
    // Both came up, so the kills did not all fall into the same place.
    EXPECT_GT(oldOnes, 0);
    EXPECT_LT(oldOnes, times);
}

TEST_F(SavingSafety, KilledSavesLeaveTheOldFileOrTheNewOne) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    KillSavers(path, "2", 100);
    const QString ogg =
        made_.Encode(QStringLiteral("a.ogg"), {QStringLiteral("-c:a"), QStringLiteral("libvorbis")});
    KillSavers(Alone(QStringLiteral("a.ogg"), ContentOf(ogg)), "1", 50);
    const QString wave = Alone(QStringLiteral("a.wav"), ContentOf(made_.Source()));
    KillSavers(wave, "1", 50);
    EXPECT_EQ(RunSaver({wave, QStringLiteral("1"), QStringLiteral("1")}), 0);
    EXPECT_EQ(FilesIn(Folder()),
              QStringList({QStringLiteral("a.mp3"), QStringLiteral("a.ogg"), QStringLiteral("a.wav")}));
}

TEST_F(SavingSafety, WithoutRoomTheOldFileStays) {
    for (const char* name : {"a.mp3", "a.flac", "a.wav"}) {
        SCOPED_TRACE(name);
        const QByteArray before = ContentOf(made_.Encode(QLatin1String(name), {}));
        const QString path = Alone(QLatin1String(name), before);
        for (const qint64 roomBytes : {before.size() / 2, before.size() - 1}) {
            EXPECT_EQ(RunSaver({path, QStringLiteral("2"), QStringLiteral("2")},
                               [roomBytes] { LimitFiles(roomBytes); }),
                      3);
            EXPECT_EQ(ContentOf(path), before);
            EXPECT_EQ(FilesIn(Folder()), QStringList(QLatin1String(name)));
        }
        QFile::remove(path);
    }
}

// The copy fits, and what TagLib adds does not.
TEST_F(SavingSafety, WithoutRoomForALargerTagTheOldFileStays) {
    const QByteArray before =
        ContentOf(made_.Encode(QStringLiteral("a.wma"), QStringLiteral("-b:a 64k").split(QLatin1Char(' '))));
    const QString path = Alone(QStringLiteral("a.wma"), before);
    const qint64 roomBytes = before.size() + 10;
    EXPECT_EQ(
        RunSaver({path, QStringLiteral("1"), QStringLiteral("1")}, [roomBytes] { LimitFiles(roomBytes); }),
        3);
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_EQ(FilesIn(Folder()), QStringList(QStringLiteral("a.wma")));
}

TEST_F(SavingSafety, InAFolderThatTakesNoFileTheFileItselfIsWritten) {
    for (const char* name : {"a.mp3", "a.wav", "a.ogg"}) {
        SCOPED_TRACE(name);
        const QByteArray before = ContentOf(made_.Encode(QLatin1String(name), {}));
        const QString path = Alone(QLatin1String(name), before);
        const QByteArray sound = SoundSum(path);
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0666), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(made_.Path({})).constData(), 0755), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(Folder()).constData(), 0555), 0);
        const QStringList once{path, QStringLiteral("2"), QStringLiteral("1"),
                               QStringLiteral("unprivileged")};
        EXPECT_EQ(RunSaver(once, [&before] { LimitFiles(before.size() - 1); }), 3);
        EXPECT_EQ(ContentOf(path), before);
        EXPECT_EQ(RunSaver(once), 0);
        ::chmod(QFile::encodeName(Folder()).constData(), 0755);
        EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).title, QStringLiteral("Title odd"));
        EXPECT_EQ(SoundSum(path), sound);
        EXPECT_EQ(FilesIn(Folder()), QStringList(QLatin1String(name)));
        QFile::remove(path);
    }
}

struct stat FactsOf(const QString& path) {
    struct stat facts {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &facts), 0);
    return facts;
}

TEST_F(SavingSafety, FurtherNamesOfTheFileStayItsOwn) {
    for (const char* name : {"a.mp3", "a.wav", "a.m4a"}) {
        SCOPED_TRACE(name);
        const QString path = Alone(QLatin1String(name), ContentOf(made_.Encode(QLatin1String(name), {})));
        const QString other = made_.Path(QLatin1String("other-") + QLatin1String(name));
        ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(other).constData()), 0);
        const struct stat before = FactsOf(path);
        const QByteArray sound = SoundSum(path);
        // Longer, shorter, and into the room that is left.
        for (const int length : {100000, 10, 20}) {
            TagFields fields = PlainFields();
            fields.comment = QString(length, u'c');
            ASSERT_EQ(SaveFields(path, fields, TagKind::Id3v2), Outcome::Ok);
            ExpectFields(FieldsOf(other, TagKind::Id3v2), fields);
            EXPECT_EQ(SoundSum(other), sound);
        }
        EXPECT_EQ(FactsOf(path).st_ino, before.st_ino);
        EXPECT_EQ(FactsOf(other).st_ino, before.st_ino);
        EXPECT_EQ(FactsOf(path).st_mode, before.st_mode);
        EXPECT_EQ(FilesIn(Folder()), QStringList(QLatin1String(name)));
        QFile::remove(path);
    }
}

TEST_F(SavingSafety, WithoutRoomAFileOfSeveralNamesIsPutBack) {
    const QByteArray before = ContentOf(made_.Encode(QStringLiteral("a.wav"), {}));
    const QString path = Alone(QStringLiteral("a.wav"), before);
    ASSERT_EQ(::link(QFile::encodeName(path).constData(),
                     QFile::encodeName(made_.Path(QStringLiteral("other.wav"))).constData()),
              0);
    // The new content fits nowhere; then it would, but for the last bytes.
    for (const qint64 roomBytes : {before.size() / 2, before.size() + 10}) {
        EXPECT_EQ(RunSaver({path, QStringLiteral("1"), QStringLiteral("1")},
                           [roomBytes] { LimitFiles(roomBytes); }),
                  3);
        EXPECT_EQ(ContentOf(path), before);
    }
}

TEST_F(SavingSafety, SystemsThatRefuseACallAreServed) {
    const QByteArray mp3 = ContentOf(Mp3());
    for (const QString& call :
         {QStringLiteral("fchmod"), QStringLiteral("linkat"), QStringLiteral("rename")}) {
        SCOPED_TRACE(call.toStdString());
        const QString path = Alone(QStringLiteral("a.mp3"), mp3);
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0644), 0);
        const ino_t before = FactsOf(path).st_ino;
        EXPECT_EQ(RunSaver({path, QStringLiteral("2"), QStringLiteral("1"), call}), 0);
        // Without that call there is still a way to put a new file in the place.
        EXPECT_EQ(FactsOf(path).st_ino != before, call == QLatin1String("linkat"));
        EXPECT_EQ(FieldsOf(path, TagKind::Id3v2).title, QStringLiteral("Title odd"));
        EXPECT_EQ(FactsOf(path).st_mode & 07777U, 0644U);
        EXPECT_EQ(FilesIn(Folder()), QStringList(QStringLiteral("a.mp3")));
        QFile::remove(path);
    }
}

// The tag stays as long as it is, so the sound is not moved.
TEST_F(SavingSafety, KilledSavesIntoAFileOfSeveralNamesLeaveTheSound) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QString other = made_.Path(QStringLiteral("other.mp3"));
    ASSERT_EQ(RunSaver({path, QStringLiteral("2"), QStringLiteral("2")}), 0); // makes the room
    ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(other).constData()), 0);
    const QByteArray sound = SoundSum(path);
    KillSavers(path, "2", 30);
    EXPECT_EQ(SoundSum(other), sound);
    EXPECT_EQ(FactsOf(path).st_nlink, 2U);
}

TEST_F(SavingSafety, LeftoversOfKilledSavesGoAtTheNextSave) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QString dead = QStringLiteral(".kestrune-1234-0.saving");
    const QString living = QStringLiteral(".kestrune-AbCdEf.saving");
    const QString others = QStringLiteral(".kestrune-notes");
    for (const QString& name : {dead, living, others}) {
        Alone(name, "half of a file");
    }
    QFile worked(QDir(Folder()).filePath(living));
    ASSERT_TRUE(worked.open(QIODevice::ReadOnly));
    ASSERT_EQ(::flock(worked.handle(), LOCK_EX), 0); // as a process does that is about to save
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    EXPECT_EQ(FilesIn(Folder()), QStringList({living, others, QStringLiteral("a.mp3")}));
    worked.close();
    ASSERT_EQ(SaveFields(path, UnicodeFields()), Outcome::Ok);
    EXPECT_EQ(FilesIn(Folder()), QStringList({others, QStringLiteral("a.mp3")}));
}

TEST_F(SavingSafety, AWriteProtectedFileRefuses) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QByteArray before = ContentOf(path);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(made_.Path({})).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(Folder()).constData(), 0777), 0);
    const int code =
        RunSaver({path, QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("unprivileged")});
    EXPECT_EQ(code, 3);
    EXPECT_EQ(ContentOf(path), before);
}

TEST_F(SavingSafety, PermissionsAndOwnerGoOver) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QByteArray name = QFile::encodeName(path);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(name.constData(), nobody, nobody), 0);
    }
    ASSERT_EQ(::chmod(name.constData(), 0640), 0);
    struct stat before {};
    ASSERT_EQ(::stat(name.constData(), &before), 0);
    ASSERT_EQ(SaveFields(path, PlainFields()), Outcome::Ok);
    struct stat after {};
    ASSERT_EQ(::stat(name.constData(), &after), 0);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino);
}

TEST_F(SavingSafety, ALinkStaysALink) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QString link = made_.Path(QStringLiteral("link.mp3"));
    ASSERT_TRUE(QFile::link(QStringLiteral("alone/a.mp3"), link));
    ASSERT_EQ(SaveFields(link, PlainFields()), Outcome::Ok);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(FieldsOf(path).title, QStringLiteral("Song"));
    EXPECT_EQ(FilesIn(Folder()), QStringList(QStringLiteral("a.mp3")));
}

// Of an item as of the list that it stands in.
TEST_F(SavingSafety, SizesThatTheFileDoesNotHoldTakeNoMemory) {
    const QByteArray list = "LIST" + Little(0xDA000000U) + "INFOIARTt  n";
    const QString path = made_.Write(QStringLiteral("a.wav"), Wave(FormatChunk() + DataChunk() + list));
    TagFields fields = FieldsOf(path);
    fields.title = QStringLiteral("Song");
    CountMemoryAnew();
    const qint64 before = HighestMemoryBytes();
    EXPECT_EQ(SaveFields(path, fields), Outcome::Ok);
    EXPECT_LT(HighestMemoryBytes() - before, 100 * 1024 * 1024);
}

TEST_F(SavingSafety, AMissingFileIsNotMade) {
    const auto info = MakeAudioInformation();
    info->Tag() = PlainFields();
    const QString path = made_.Path(QStringLiteral("missing.mp3"));
    EXPECT_EQ(info->SaveTagToFile(path), Outcome::NotFound);
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace

} // namespace kestrune
