// One file takes the place of another: what stays, what goes over, and what is left where that is refused.
#include "app/file_replacement.h"

#include "app/safe_file.h"
#include "support/refused_rights.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <array>
#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kestrune {

namespace {

class FileReplacementTest : public testing::Test {
protected:
    FileReplacementTest() {
        QDir(folder_.path()).mkdir(QStringLiteral("in"));
        // For somebody else, too.
        ::chmod(QFile::encodeName(folder_.path()).constData(), 0755);
    }

    QString Path(const char* name) const {
        return folder_.path() + QLatin1String("/in/") + QLatin1String(name);
    }
    QByteArray Encoded(const char* name) const { return QFile::encodeName(Path(name)); }
    QString Write(const char* name, const QByteArray& content) const {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return Path(name);
    }
    QStringList Names() const {
        return QDir(folder_.path() + QLatin1String("/in"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    struct stat Facts(const char* name) const {
        struct stat facts {};
        EXPECT_EQ(::stat(Encoded(name).constData(), &facts), 0);
        return facts;
    }
    static Outcome Replace(const QString& path, const QByteArray& content, Replacing how) {
        FileReplacement replacement(path, how);
        const Outcome begun = replacement.Begin();
        FilePieces pieces;
        pieces.AddBytes(content);
        return begun != Outcome::Ok                      ? begun
               : replacement.Fill(pieces) != Outcome::Ok ? Outcome::WriteFailed
                                                         : replacement.Commit();
    }
    // In a process of its own, which becomes somebody who may not write everywhere.
    static bool HoldsForNobody(const std::function<bool()>& condition) {
        const pid_t child = ::fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            const bool isBound = ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
            _exit(isBound && condition() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    void GiveToNobody(mode_t folderMode) const {
        if (::geteuid() == 0) {
            EXPECT_EQ(::chown(Encoded("a").constData(), 65534, 65534), 0);
        }
        EXPECT_EQ(::chmod(Encoded("").constData(), folderMode), 0);
    }

    QTemporaryDir folder_;
};

TEST_F(FileReplacementTest, AllIsTakenOver) {
    const QString path = Write("a", "the old one");
    ASSERT_EQ(::chmod(Encoded("a").constData(), 0640), 0);
    const bool hasAttributes = ::setxattr(Encoded("a").constData(), "user.mood", "calm", 4, 0) == 0;
    for (const Replacing how : {Replacing::KeepsFile, Replacing::KeepsName}) {
        const ino_t before = Facts("a").st_ino;
        ASSERT_EQ(Replace(path, "the new one, which is longer", how), Outcome::Ok);
        EXPECT_EQ(ReadWholeFile(path), "the new one, which is longer");
        EXPECT_NE(Facts("a").st_ino, before) << "it was written over";
        EXPECT_EQ(Facts("a").st_mode & 07777U, 0640U);
        std::array<char, 8> mood{};
        EXPECT_TRUE(!hasAttributes ||
                    ::getxattr(Encoded("a").constData(), "user.mood", mood.data(), mood.size()) == 4);
        EXPECT_EQ(Names(), QStringList(QStringLiteral("a")));
    }
}

TEST_F(FileReplacementTest, FurtherNamesAreServedOrKeepTheOldContent) {
    const QString path = Write("a", "old");
    ASSERT_EQ(::link(Encoded("a").constData(), Encoded("b").constData()), 0);
    ASSERT_EQ(Replace(path, "newer", Replacing::KeepsFile), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(Path("b")), "newer");
    ASSERT_EQ(Replace(path, "newest", Replacing::KeepsName), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path), "newest");
    EXPECT_EQ(ReadWholeFile(Path("b")), "newer");
}

TEST_F(FileReplacementTest, RefusedPermissionsWriteIntoTheFileOrAreLetGo) {
    const QString path = Write("a", "old");
    ASSERT_EQ(::chmod(Encoded("a").constData(), 0640), 0);
    const ino_t before = Facts("a").st_ino;
    const RefusedRights refused;
    ASSERT_EQ(Replace(path, "newer", Replacing::KeepsFile), Outcome::Ok);
    EXPECT_EQ(Facts("a").st_ino, before);
    EXPECT_EQ(Facts("a").st_mode & 07777U, 0640U);
    EXPECT_EQ(ReadWholeFile(path), "newer");
    ASSERT_EQ(Replace(path, "newest", Replacing::KeepsName), Outcome::Ok);
    EXPECT_NE(Facts("a").st_ino, before);
    EXPECT_EQ(ReadWholeFile(path), "newest");
    EXPECT_GT(RefusedRights::count, 1);
}

TEST_F(FileReplacementTest, AFolderThatTakesNoFileLetsTheFileBeWrittenInto) {
    const QString path = Write("a", "old");
    GiveToNobody(0555);
    EXPECT_TRUE(HoldsForNobody([&] { return Replace(path, "newer", Replacing::KeepsFile) == Outcome::Ok; }));
    EXPECT_EQ(ReadWholeFile(path), "newer");
    EXPECT_TRUE(HoldsForNobody(
        [&] { return Replace(path, "newest", Replacing::KeepsName) == Outcome::WriteFailed; }));
    EXPECT_TRUE(HoldsForNobody([&] { return ReplaceFile(path, "newest"); }));
    EXPECT_EQ(ReadWholeFile(path), "newest");
    EXPECT_FALSE(HoldsForNobody([&] { return ReplaceFile(Path("b"), "none"); }));
    EXPECT_EQ(Names(), QStringList(QStringLiteral("a")));
}

// A rename would get round it, and so would a staging place.
TEST_F(FileReplacementTest, AWriteProtectedFileIsLeftAlone) {
    const QString path = Write("a", "old");
    ASSERT_EQ(::chmod(Encoded("a").constData(), 0444), 0);
    GiveToNobody(0777);
    for (const Replacing how : {Replacing::KeepsFile, Replacing::KeepsName}) {
        EXPECT_TRUE(HoldsForNobody([&] { return Replace(path, "new", how) == Outcome::WriteFailed; }));
    }
    EXPECT_EQ(ReadWholeFile(path), "old");
}

TEST_F(FileReplacementTest, LinksAreFollowedAndStay) {
    Write("a", "old");
    ASSERT_EQ(::symlink("a", Encoded("b").constData()), 0);
    ASSERT_EQ(Replace(Path("b"), "new", Replacing::KeepsFile), Outcome::Ok);
    EXPECT_TRUE(QFileInfo(Path("b")).isSymLink());
    EXPECT_EQ(ReadWholeFile(Path("a")), "new");
    ASSERT_EQ(::symlink("missing", Encoded("c").constData()), 0);
    EXPECT_TRUE(ReplaceFile(Path("c"), "made"));
    EXPECT_TRUE(QFileInfo(Path("c")).isSymLink());
    EXPECT_EQ(ReadWholeFile(Path("missing")), "made");
    ASSERT_EQ(::symlink("d", Encoded("d").constData()), 0);
    EXPECT_FALSE(ReplaceFile(Path("d"), "none"));
}

TEST_F(FileReplacementTest, WhatIsNoFileIsNotFound) {
    ASSERT_EQ(::mkfifo(Encoded("pipe").constData(), 0600), 0);
    for (const QString& path : {Path("pipe"), Path("none"), Path("")}) {
        EXPECT_EQ(Replace(path, "x", Replacing::KeepsFile), Outcome::NotFound) << path.toStdString();
    }
}

TEST_F(FileReplacementTest, ANewFileHasThePermissionsOfNewFiles) {
    const mode_t before = ::umask(027);
    EXPECT_TRUE(ReplaceFile(Path("a"), "new"));
    ::umask(before);
    EXPECT_EQ(Facts("a").st_mode & 07777U, 0640U);
    EXPECT_EQ(Names(), QStringList(QStringLiteral("a")));
}

TEST_F(FileReplacementTest, WhatCameMeanwhileIsLeftAlone) {
    FileReplacement replacement(Path("a"), Replacing::KeepsOthers);
    FilePieces pieces;
    pieces.AddBytes("ours");
    ASSERT_EQ(replacement.BeginNew(), Outcome::Ok);
    ASSERT_EQ(replacement.Fill(pieces), Outcome::Ok);
    Write("a", "another's");
    EXPECT_EQ(replacement.Commit(), Outcome::WriteFailed);
    EXPECT_EQ(ReadWholeFile(Path("a")), "another's");
}

TEST_F(FileReplacementTest, WithoutCommitNothingIsLeft) {
    const QString path = Write("a", "old");
    {
        FileReplacement replacement(path);
        FilePieces pieces;
        pieces.AddBytes("new");
        ASSERT_EQ(replacement.Begin(), Outcome::Ok);
        ASSERT_EQ(replacement.Fill(pieces), Outcome::Ok);
    }
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(Names(), QStringList(QStringLiteral("a")));
}

TEST_F(FileReplacementTest, LeftoversOfKilledProcessesAreRemoved) {
    const QString path = Write("a", "old");
    Write(".kestrune-4711-0.saving", "left");
    Write(".kestrune-4711-0.other", "somebody's");
    ASSERT_EQ(Replace(path, "new", Replacing::KeepsFile), Outcome::Ok);
    EXPECT_EQ(Names(), QStringList({QStringLiteral(".kestrune-4711-0.other"), QStringLiteral("a")}));
}

} // namespace

} // namespace kestrune
