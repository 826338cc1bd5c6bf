// Native playlists of older builds and of other programs: read, brought up to date, and kept as they were.
#include "app/safe_file.h"
#include "playlist/playlist_files_fixture.h"
#include "support/refused_rights.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::PlaylistFilesTest;
using rules::Texts;
using rules::Utf8;

// A file of one older record, with the format text of 200 bytes and no type.
QByteArray OlderFile(const QByteArray& header) {
    const auto field = [](const char* text, int width) {
        return QByteArray(text).leftJustified(width, ' ', true);
    };
    QByteArray bytes("\x01\x00\0\0\0\0\0\0\0", 9);
    bytes += header.leftJustified(50, ' ', true) + QByteArray(941, '\0');
    bytes += field("Older//", 380) + field("01:00//", 20) + field("format//", 200) + field("1.0m//", 20) +
             field("/m///", 200) + field("Song.WAV//", 172) + QByteArray("\xFF\xFF", 2);
    return bytes;
}

TEST_F(PlaylistFilesTest, AnOlderListIsConvertedInPlaceAndRead) {
    for (const char* header :
         {"Kestrune Playlist V5.1 50100", "Kestrune Playlist V5.4 50409", "no version"}) {
        const QString file = list.music.Write(QStringLiteral("l.ksl"), OlderFile(header));
        OpenByDialog(file);
        ASSERT_EQ(list.rows.Count(), 1) << header;
        EXPECT_EQ(Utf8(list.rows.Field(1, RowText)), "1.Older");
        EXPECT_EQ(Utf8(list.rows.Field(1, SubType)), "wav");
        EXPECT_EQ(Utf8(list.rows.Field(1, SubFolder)), "/m/");
        EXPECT_EQ(Utf8(list.rows.Field(1, SubFormats)), "format");
        EXPECT_TRUE(list.rows.IsSelected(1));
        const std::string converted = Content(file);
        EXPECT_EQ(converted.substr(9, 28), "Kestrune Playlist V5.4 50410");
        EXPECT_EQ(converted.substr(1597, 3), "wav");
        EXPECT_EQ(Content(file + QStringLiteral(".old")), OlderFile(header).toStdString());
        EXPECT_EQ(QDir(list.music.Path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
        QFile::remove(file + QStringLiteral(".old"));
    }
}

class OldListsTest : public PlaylistFilesTest {
protected:
    const QByteArray older_ = OlderFile("Kestrune Playlist V5.1 50100");
    const QString file_ = list.music.Path(QStringLiteral("l.ksl"));
    const QString kept_ = file_ + QStringLiteral(".old");

    void WriteOlder() { list.music.Write(QStringLiteral("l.ksl"), older_); }
    // A list of this build whose one title is in an 8-bit code page.
    static QByteArray ForeignFile() {
        PlaylistRows rows;
        rows.Append(rules::MakeRow(1, QStringLiteral("Bjqrk"), QStringLiteral("00:01"),
                                   QStringLiteral("1.0m"), QStringLiteral("C:\\m\\"),
                                   QStringLiteral("a.mp3")));
        return EncodeKsl(rows).replace("Bjqrk", "Bj\xF6rk");
    }
    QStringList FilesThere() const { return QDir(list.music.Path()).entryList(QDir::Files | QDir::Hidden); }
    int FilesBeside() const { return static_cast<int>(FilesThere().size()); }
};

TEST_F(OldListsTest, TheFirstOldOneIsKeptForEver) {
    WriteOlder();
    OpenByDialog(file_);
    QByteArray second = older_;
    second.replace("Older", "Other");
    list.music.Write(QStringLiteral("l.ksl"), second);
    OpenByDialog(file_);
    EXPECT_EQ(Titles(), (Texts{"1.Other"}));
    EXPECT_EQ(Content(file_).substr(9, 28), "Kestrune Playlist V5.4 50410");
    EXPECT_EQ(Content(kept_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 2);
}

TEST_F(OldListsTest, AnythingOfThatNameIsLeftAlone) {
    WriteOlder();
    ASSERT_TRUE(QDir().mkpath(kept_));
    OpenByDialog(file_);
    EXPECT_EQ(Titles(), (Texts{"1.Older"}));
    EXPECT_TRUE(QDir(kept_).exists());
}

TEST_F(OldListsTest, OfALinkTheFileIsKept) {
    const Folder elsewhere;
    const QString target = elsewhere.Write(QStringLiteral("there.ksl"), older_);
    ASSERT_TRUE(QFile::link(target, file_));
    OpenByDialog(file_);
    EXPECT_TRUE(QFileInfo(file_).isSymLink());
    EXPECT_EQ(Content(target).substr(9, 28), "Kestrune Playlist V5.4 50410");
    EXPECT_FALSE(QFileInfo(kept_).isSymLink());
    EXPECT_EQ(Content(kept_), older_.toStdString());
}

TEST_F(OldListsTest, AForeignListThatIsOnlyReadStaysAlone) {
    list.music.Write(QStringLiteral("l.ksl"), ForeignFile());
    OpenByDialog(file_);
    EXPECT_EQ(Titles(), (Texts{"1.Björk"}));
    EXPECT_EQ(Content(file_), ForeignFile().toStdString());
    EXPECT_EQ(FilesBeside(), 1);
}

TEST_F(OldListsTest, AForeignListThatIsStoredAnewIsKeptOnce) {
    list.music.Write(QStringLiteral("l.ksl"), ForeignFile());
    OpenByDialog(file_);
    SaveByDialog(file_);
    EXPECT_NE(Content(file_).find("Bj\xC3\xB6rk"), std::string::npos);
    EXPECT_EQ(Content(kept_), ForeignFile().toStdString());
    list.music.Write(QStringLiteral("l.ksl"), ForeignFile().replace("C:", "D:"));
    SaveByDialog(file_);
    EXPECT_EQ(Content(kept_), ForeignFile().toStdString());
    EXPECT_EQ(FilesBeside(), 2);
}

TEST_F(OldListsTest, AForeignDefaultListIsKept) {
    list.home.Write(QStringLiteral("Default.ksl"), ForeignFile());
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    SaveDefault();
    SaveDefault();
    EXPECT_EQ(Content(list.DefaultFile() + QStringLiteral(".old")), ForeignFile().toStdString());
}

TEST_F(OldListsTest, AnOwnListIsReplacedWithoutATrace) {
    AddTwoRows();
    SaveByDialog(file_);
    rules::Playlist later;
    later.prompts.filesToChoose = {QStringList{file_}};
    later.files.OpenSavePlayList(QStringLiteral("SAVE"), false);
    EXPECT_EQ(KslCount(QByteArray::fromStdString(Content(file_))), 0);
    EXPECT_FALSE(FilesThere().contains(QStringLiteral("l.ksl.old")));
    EXPECT_EQ(FilesThere().size(), 3) << "with the two of music";
}

TEST_F(OldListsTest, AnEmptyFileIsNotWorthKeeping) {
    list.music.Write(QStringLiteral("l.ksl"));
    SaveByDialog(file_);
    EXPECT_EQ(FilesBeside(), 1);
}

// --- Places that can't be written ---

// Runs in a child that is bound by permissions, which root is not, and by the size of files. True if it came
// to its end.
bool InChild(rlim_t largestBytes, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{largestBytes, largestBytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && setuid(nobody) != 0) {
            _exit(2);
        }
        work();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void Permit(const QString& path, mode_t mode) {
    EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << Utf8(path);
}

TEST_F(OldListsTest, FromAFolderThatCannotBeWrittenItIsReadAndStaysAsItIs) {
    WriteOlder();
    Permit(file_, 0666);
    Permit(list.music.Path(), 0555);
    ASSERT_TRUE(InChild(RLIM_INFINITY, [this] {
        OpenByDialog(file_);
        _exit(list.rows.Count() == 1 ? 0 : 3);
    }));
    Permit(list.music.Path(), 0755);
    EXPECT_EQ(Content(file_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 1);
}

TEST_F(OldListsTest, OnAFullDiskItIsReadAndStaysAsItIs) {
    WriteOlder();
    Permit(list.music.Path(), 0777);
    Permit(file_, 0666);
    ASSERT_TRUE(InChild(1500, [this] {
        OpenByDialog(file_);
        _exit(list.rows.Count() == 1 ? 0 : 3);
    }));
    EXPECT_EQ(Content(file_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 1) << Utf8(FilesThere().join(u' '));
}

// A link to a file of another file system can't get a second name here, so the file is copied.
class OldListElsewhereTest : public OldListsTest {
protected:
    void SetUp() override {
        struct stat here {};
        struct stat there {};
        const QByteArray folder = QFile::encodeName(list.music.Path());
        if (!elsewhere_.isValid() || ::stat(folder.constData(), &here) != 0 ||
            ::stat(QFile::encodeName(elsewhere_.path()).constData(), &there) != 0 ||
            here.st_dev == there.st_dev) {
            GTEST_SKIP() << "there is no second file system";
        }
        QFile target(elsewhere_.filePath(QStringLiteral("there.ksl")));
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(older_);
        target.close();
        Permit(target.fileName(), 0666);
        ASSERT_TRUE(QFile::link(target.fileName(), file_));
        Permit(elsewhere_.path(), 0777);
        Permit(list.music.Path(), 0777);
    }
    QTemporaryDir elsewhere_{QStringLiteral("/dev/shm/kestrune-test-XXXXXX")};
};

TEST_F(OldListElsewhereTest, IsCopied) {
    OpenByDialog(file_);
    EXPECT_EQ(Content(file_).substr(9, 28), "Kestrune Playlist V5.4 50410");
    EXPECT_EQ(Content(kept_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 2) << Utf8(FilesThere().join(u' '));
    list.music.Write(QStringLiteral("l.ksl"), older_);
    OpenByDialog(file_);
    EXPECT_EQ(Content(kept_), older_.toStdString());
}

TEST_F(OldListElsewhereTest, ACopyThatFailsLeavesTheListAsItIs) {
    ASSERT_TRUE(InChild(1500, [this] {
        OpenByDialog(file_);
        _exit(list.rows.Count() == 1 ? 0 : 3);
    }));
    EXPECT_EQ(Content(file_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 1) << Utf8(FilesThere().join(u' '));
}

TEST_F(OldListElsewhereTest, WherePermissionsCannotBeSetAllElseIsDone) {
    {
        const RefusedRights refused;
        OpenByDialog(file_);
        SaveByDialog(file_);
        EXPECT_GT(RefusedRights::count, 0);
    }
    EXPECT_EQ(list.rows.Count(), 1);
    EXPECT_EQ(Content(file_).substr(9, 28), "Kestrune Playlist V5.4 50410");
    EXPECT_EQ(Content(kept_), older_.toStdString());
    EXPECT_EQ(FilesBeside(), 2) << Utf8(FilesThere().join(u' '));
}

} // namespace
} // namespace kestrune
