#include "program/folder_lock.h"

#include "support/rule_support.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::Utf8;

// What may stand in place of the lock file when no instance runs.
struct Left {
    const char* name;
    std::function<void(const QString& path)> make;
};

void Write(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray OwnerText(qint64 process, const QByteArray& program, const QByteArray& host) {
    return QByteArray::number(process) + '\n' + program + '\n' + host + '\n';
}

void Permit(const QString& path, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << Utf8(path);
}

const std::vector<Left>& AllLeft() {
    static const std::vector<Left> all = {
        {"nothing", [](const QString&) {}},
        {"an empty file", [](const QString& path) { Write(path, {}); }},
        {"garbage", [](const QString& path) { Write(path, QByteArray(5000, '\xFE')); }},
        {"a lock of another host",
         [](const QString& path) { Write(path, OwnerText(1, "kestrune", "elsewhere")); }},
        {"another program that lives",
         [](const QString& path) {
             Write(path, OwnerText(::getppid(), "init", QSysInfo::machineHostName().toUtf8()));
         }},
        {"a program of our name that lives",
         [](const QString& path) {
             const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
             Write(path, OwnerText(::getpid(), QFileInfo(self).fileName().toUtf8(),
                                   QSysInfo::machineHostName().toUtf8()));
         }},
        {"one that died", [](const QString& path) { Write(path, OwnerText(999999999, "kestrune", {})); }},
        {"a folder", [](const QString& path) { ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/in"))); }},
        {"a file without permissions",
         [](const QString& path) {
             Write(path, "x");
             Permit(path, 0);
         }},
        {"a file to be read only",
         [](const QString& path) {
             Write(path, "x");
             Permit(path, 0444);
         }},
        {"a folder without permissions",
         [](const QString& path) {
             ASSERT_TRUE(QDir().mkpath(path));
             Permit(path, 0);
         }},
        {"a link to nowhere",
         [](const QString& path) { ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere/at/all"), path)); }},
        {"a link to itself", [](const QString& path) { ASSERT_TRUE(QFile::link(path, path)); }},
        {"a pipe",
         [](const QString& path) { ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0); }},
    };
    return all;
}

// A folder of its own for each, where a user without rights may write too.
class Place {
public:
    explicit Place(const Left& left) {
        Permit(folder_.Path(), 0777);
        left.make(LockPath());
    }
    QString Path() const { return folder_.Path(); }
    QString LockPath() const { return folder_.Path(QStringLiteral("kestrune.lock")); }

private:
    Folder folder_;
};

// Processes that try to lock a folder at the same moment, as a user whom permissions bind. How many of them
// believe to be the only one; -1 when one did not come to its end.
int HowManyLock(const QString& folder, int processes) {
    std::array<int, 2> start{};
    std::array<int, 2> stop{};
    std::array<int, 2> answers{};
    EXPECT_EQ(::pipe(start.data()) | ::pipe(stop.data()) | ::pipe(answers.data()), 0);
    std::vector<pid_t> children;
    for (int i = 0; i < processes; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
                ::_exit(1);
            }
            char end = 0;
            ::close(start[1]);
            ::close(stop[1]);
            // Both return when the parent closes its end.
            [[maybe_unused]] ssize_t none = ::read(start[0], &end, 1);
            FolderLock lock(folder);
            const char answer = lock.TryLock() ? 'y' : 'n';
            none = ::write(answers[1], &answer, 1);
            none = ::read(stop[0], &end, 1);
            ::_exit(0);
        }
        children.push_back(child);
    }
    ::close(start[0]);
    ::close(stop[0]);
    ::close(answers[1]);
    ::close(start[1]);
    int locked = 0;
    char answer = 0;
    for (int i = 0; i < processes && ::read(answers[0], &answer, 1) == 1; ++i) {
        locked += static_cast<int>(answer == 'y');
    }
    ::close(stop[1]);
    ::close(answers[0]);
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        locked = status == 0 ? locked : -1;
    }
    return locked;
}

TEST(FolderLock, NothingThatWasLeftLocksTheUserOut) {
    for (const Left& left : AllLeft()) {
        const Place place(left);
        EXPECT_EQ(HowManyLock(place.Path(), 1), 1) << left.name;
        EXPECT_EQ(HowManyLock(place.Path(), 1), 1) << left.name << ", the second time";
    }
}

TEST(FolderLock, OfManyThatStartAtOnceOneRuns) {
    for (const Left& left : AllLeft()) {
        for (int round = 0; round < 10; ++round) {
            const Place place(left);
            ASSERT_EQ(HowManyLock(place.Path(), 20), 1) << left.name << ", round " << round;
        }
    }
}

TEST(FolderLock, ASecondOneIsRefusedUntilTheFirstEnds) {
    for (const Left& left : AllLeft()) {
        const Place place(left);
        auto first = std::make_unique<FolderLock>(place.Path());
        ASSERT_TRUE(first->TryLock()) << left.name;
        FolderLock second(place.Path());
        EXPECT_FALSE(second.TryLock()) << left.name;
        EXPECT_FALSE(second.TryLock()) << left.name;
        first.reset();
        EXPECT_TRUE(second.TryLock()) << left.name;
    }
}

TEST(FolderLock, ADeletedFileLetsNobodyIn) {
    const Place place(AllLeft()[0]);
    FolderLock first(place.Path());
    ASSERT_TRUE(first.TryLock());
    ASSERT_TRUE(QFile::remove(place.LockPath()));
    FolderLock second(place.Path());
    EXPECT_FALSE(second.TryLock());
}

TEST(FolderLock, NorDoesAFileThatLosesItsPermissions) {
    const Place place(AllLeft()[0]);
    FolderLock first(place.Path());
    ASSERT_TRUE(first.TryLock());
    Permit(place.LockPath(), 0);
    EXPECT_EQ(HowManyLock(place.Path(), 3), 0);
}

TEST(FolderLock, TheFileGoesWithTheLock) {
    const Place place(AllLeft()[0]);
    {
        FolderLock lock(place.Path());
        ASSERT_TRUE(lock.TryLock());
        EXPECT_EQ(Content(place.LockPath()).substr(0, 3), std::to_string(::getpid()).substr(0, 3));
        FolderLock refused(place.Path());
        EXPECT_FALSE(refused.TryLock());
    }
    EXPECT_TRUE(QDir(place.Path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST(FolderLock, OneThatWasRefusedLeavesTheFile) {
    const Place place(AllLeft()[0]);
    FolderLock first(place.Path());
    ASSERT_TRUE(first.TryLock());
    const std::string owner = Content(place.LockPath());
    { EXPECT_FALSE(FolderLock(place.Path()).TryLock()); }
    EXPECT_EQ(Content(place.LockPath()), owner);
}

TEST(FolderLock, AnEarlierVersionIsKeptOutAndKeepsOut) {
    const Place place(AllLeft()[0]);
    {
        FolderLock now(place.Path());
        ASSERT_TRUE(now.TryLock());
        QLockFile earlier(place.LockPath());
        earlier.setStaleLockTime(0);
        EXPECT_FALSE(earlier.tryLock(0));
    }
    QLockFile earlier(place.LockPath());
    earlier.setStaleLockTime(0);
    ASSERT_TRUE(earlier.tryLock(0));
    FolderLock now(place.Path());
    EXPECT_FALSE(now.TryLock());
    earlier.unlock();
    EXPECT_TRUE(now.TryLock());
}

TEST(FolderLock, WithoutAFolderThereIsNothingToGuard) {
    FolderLock lock(QStringLiteral("/nowhere/at/all"));
    EXPECT_TRUE(lock.TryLock());
}

// What a user without rights finds in a folder of somebody else.
TEST(FolderLock, AFolderThatCannotBeWrittenStillHoldsOneInstance) {
    const Place place(AllLeft()[0]);
    Permit(place.Path(), 0555);
    EXPECT_EQ(HowManyLock(place.Path(), 1), 1);
    EXPECT_EQ(HowManyLock(place.Path(), 5), 1);
    Permit(place.Path(), 0755);
}

} // namespace
} // namespace kestrune
