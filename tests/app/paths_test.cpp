#include "app/paths.h"

#include "app/safe_file.h"
#include "support/rule_support.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::Utf8;

// Sets a variable of the environment for one test.
class Variable {
public:
    Variable(const char* name, const QByteArray& value) : name_(name), old_(qgetenv(name)) {
        wasSet_ = qEnvironmentVariableIsSet(name);
        value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    ~Variable() { wasSet_ ? qputenv(name_, old_) : qunsetenv(name_); }
    Q_DISABLE_COPY_MOVE(Variable)

private:
    const char* name_;
    QByteArray old_;
    bool wasSet_ = false;
};

TEST(AppPath, TheVariableNamesItAndItIsCreated) {
    const Folder folder;
    const QString home = folder.Path(QStringLiteral("deep/home"));
    const Variable variable("KESTRUNE_HOME", home.toUtf8());
    EXPECT_EQ(Utf8(FindAppPath(QStringLiteral("/usr/bin"))), Utf8(home));
    EXPECT_TRUE(QDir(home).exists());
}

TEST(AppPath, ItHasNoSeparatorAtItsEnd) {
    const Folder folder;
    const Variable variable("KESTRUNE_HOME", folder.Path().toUtf8() + "//");
    EXPECT_EQ(Utf8(FindAppPath(QString())), Utf8(folder.Path()));
}

TEST(AppPath, WithoutTheVariableItIsTheExecutablesFolderIfThatCanBeWritten) {
    const Folder folder;
    const Variable variable("KESTRUNE_HOME", QByteArray());
    EXPECT_EQ(Utf8(FindAppPath(folder.Path())), Utf8(folder.Path()));
}

TEST(AppPath, ElseItLiesBelowTheUsersDataFolder) {
    const Folder folder;
    const Variable home("KESTRUNE_HOME", QByteArray());
    const Variable data("XDG_DATA_HOME", folder.Path().toUtf8());
    // A folder that does not exist cannot be written by anybody.
    EXPECT_EQ(Utf8(FindAppPath(folder.Path(QStringLiteral("gone")))),
              Utf8(folder.Path(QStringLiteral("kestrune"))));
    EXPECT_TRUE(QDir(folder.Path(QStringLiteral("kestrune"))).exists());
}

TEST(StartupDir, LiesInTheUsersSettings) {
    const Folder folder;
    const Variable config("XDG_CONFIG_HOME", folder.Path().toUtf8() + "/");
    EXPECT_EQ(Utf8(FindConfigDir()), Utf8(folder.Path()));
    EXPECT_EQ(Utf8(FindStartupDir()), Utf8(folder.Path(QStringLiteral("autostart"))));
}

TEST(OwnFile, IsFoundInAnySpellingOfItsLetters) {
    const Folder folder;
    const QString other = folder.Write(QStringLiteral("options.DAT"));
    EXPECT_EQ(Utf8(OwnFile(folder.Path(), QStringLiteral("Options.dat"))), Utf8(other));
}

TEST(OwnFile, TheGivenSpellingComesFirst) {
    const Folder folder;
    folder.Write(QStringLiteral("OPTIONS.DAT"));
    const QString exact = folder.Write(QStringLiteral("Options.dat"));
    EXPECT_EQ(Utf8(OwnFile(folder.Path(), QStringLiteral("Options.dat"))), Utf8(exact));
}

TEST(OwnFile, AFileThatDoesNotExistGetsTheGivenSpelling) {
    const Folder folder;
    EXPECT_EQ(Utf8(OwnFile(folder.Path(), QStringLiteral("Options.dat"))),
              Utf8(folder.Path(QStringLiteral("Options.dat"))));
}

TEST(FileExists, AFolderIsNoFile) {
    const Folder folder;
    EXPECT_FALSE(FileExists(folder.Path()));
    EXPECT_FALSE(FileExists(folder.Path(QStringLiteral("none"))));
    EXPECT_TRUE(FileExists(folder.Write(QStringLiteral("one"))));
}

TEST(ReplaceFile, WritesTheContentAndLeavesNothingBesideIt) {
    const Folder folder;
    const QString path = folder.Write(QStringLiteral("f"), "an old and longer content");
    EXPECT_TRUE(ReplaceFile(path, "new"));
    EXPECT_EQ(Content(path), "new");
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(ReplaceFile, AFolderInItsPlaceIsLeftAlone) {
    const Folder folder;
    const QString path = folder.Path(QStringLiteral("f"));
    ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/inside")));
    EXPECT_FALSE(ReplaceFile(path, "new"));
    EXPECT_TRUE(QDir(path + QStringLiteral("/inside")).exists());
}

TEST(ReplaceFile, APathBelowAFileFailsAndLeavesTheFile) {
    const Folder folder;
    const QString file = folder.Write(QStringLiteral("f"), "old");
    EXPECT_FALSE(ReplaceFile(file + QStringLiteral("/g"), "new"));
    EXPECT_EQ(Content(file), "old");
}

// Runs in a child, so that the limit on file sizes ends with it. 0 when the write was refused.
int ReplaceUnderSizeLimit(const QString& path, const QByteArray& content, rlim_t largestBytes) {
    const pid_t child = fork();
    if (child == 0) {
        // Without this the limit would end the child by a signal.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{largestBytes, largestBytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(ReplaceFile(path, content) ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ReplaceFile, AWriteThatBreaksOffLeavesTheOldFileWhole) {
    const Folder folder;
    const QString path = folder.Write(QStringLiteral("f"), "the old content");
    // A few bytes fail only when a buffer is emptied, many at once.
    for (const int bytes : {600, 5000, 100000}) {
        EXPECT_EQ(ReplaceUnderSizeLimit(path, QByteArray(bytes, 'n'), 512), 0) << bytes;
        EXPECT_EQ(Content(path), "the old content") << bytes;
        EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << bytes;
    }
}

TEST(ReadWholeFile, AMissingFileReadsEmpty) {
    const Folder folder;
    EXPECT_TRUE(ReadWholeFile(folder.Path(QStringLiteral("none"))).isEmpty());
    EXPECT_TRUE(ReadWholeFile(folder.Path()).isEmpty());
}

} // namespace
} // namespace kestrune
