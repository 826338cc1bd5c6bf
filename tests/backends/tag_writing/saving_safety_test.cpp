// A save that is killed, refused or out of room leaves the old file or the new one.
#include "backends/tag_writing/tag_judges.h"
#include "backends/tags/file_replacement.h"
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

// Saves of two tags take turns until the saver is killed, at moments spread over them.
void KillSavers(const QString& path, const char* kind, int times) {
    std::mt19937 random(20031);
    std::uniform_int_distribution<int> moment(0, 12000);
    const QByteArray sound = ContentOf(path).right(40000).left(30000);
    int oldOnes = 0;
    for (int time = 0; time < times; ++time) {
        QProcess saver;
        saver.start(QStringLiteral(KESTRUNE_TAG_SAVER), {path, QLatin1String(kind)});
        ASSERT_TRUE(saver.waitForStarted());
        ASSERT_TRUE(saver.waitForReadyRead(10000));
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
    for (const QString& name : FilesIn(Folder())) {
        const bool leftover = name.startsWith(QLatin1String(replacementPrefix)) &&
                              name.endsWith(QLatin1String(replacementSuffix));
        EXPECT_TRUE(leftover || !name.startsWith(QLatin1Char('.'))) << name.toStdString();
    }
    EXPECT_EQ(QDir(Folder()).entryList(QDir::Files, QDir::Name),
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

TEST_F(SavingSafety, AFolderThatTakesNoFileRefuses) {
    const QString path = Alone(QStringLiteral("a.mp3"), ContentOf(Mp3()));
    const QByteArray before = ContentOf(path);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0666), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(made_.Path({})).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(Folder()).constData(), 0555), 0);
    const int code =
        RunSaver({path, QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("unprivileged")});
    ::chmod(QFile::encodeName(Folder()).constData(), 0755);
    EXPECT_EQ(code, 3);
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_EQ(FilesIn(Folder()), QStringList(QStringLiteral("a.mp3")));
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

TEST_F(SavingSafety, AMissingFileIsNotMade) {
    const auto info = MakeAudioInformation();
    info->Tag() = PlainFields();
    const QString path = made_.Path(QStringLiteral("missing.mp3"));
    EXPECT_EQ(info->SaveTagToFile(path), Outcome::NotFound);
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace

} // namespace kestrune
