#include "backends/writing/output_file.h"

#include "support/refused_rights.h"
#include "support/small_disk.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

class OutputFileTest : public testing::Test {
protected:
    TestFolder folder_;
    QString path_ = folder_.Path(QStringLiteral("a.wav"));
    OutputFile file_;

    QStringList Names() const {
        return QDir(QFileInfo(path_).path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

} // namespace

TEST_F(OutputFileTest, NewFileStandsUnderItsNameAtOnce) {
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
    file_.Device().write("abc");
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), "abc");
}

TEST_F(OutputFileTest, NewFileStaysWithoutCommit) {
    {
        OutputFile file;
        ASSERT_EQ(file.Open(path_), Outcome::Ok);
        file.Device().write("part");
    }
    EXPECT_EQ(ReadWholeFile(path_), "part");
}

TEST_F(OutputFileTest, ExistingFileIsReplacedByCommitOnly) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Device().write("newer");
    EXPECT_EQ(ReadWholeFile(path_), "old");
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), "newer");
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
}

// Large enough to be sent to the disk in several steps.
TEST_F(OutputFileTest, LargeFileTakesThePlaceOfAnother) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    QByteArray wanted;
    for (int piece = 0; piece < 20; ++piece) {
        const QByteArray bytes(700001, static_cast<char>('a' + piece));
        EXPECT_EQ(file_.Device().write(bytes), bytes.size());
        wanted += bytes;
    }
    ASSERT_TRUE(file_.Device().seek(3));
    file_.Device().write("head");
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_EQ(ReadWholeFile(path_), wanted.replace(3, 4, "head"));
}

TEST_F(OutputFileTest, RefusedRightsDoNotCostTheResult) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Device().write("newer");
    {
        const RefusedRights refused;
        ASSERT_NE(chmod(QFile::encodeName(path_).constData(), S_IRUSR), 0);
        EXPECT_EQ(file_.Commit(), Outcome::Ok);
        EXPECT_GT(RefusedRights::count, 1) << "nobody asked";
    }
    EXPECT_EQ(ReadWholeFile(path_), "newer");
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
}

TEST_F(OutputFileTest, ExistingFileIsKeptWithoutCommit) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    {
        OutputFile file;
        ASSERT_EQ(file.Open(path_), Outcome::Ok);
        file.Device().write("newer");
    }
    EXPECT_EQ(ReadWholeFile(path_), "old");
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
}

TEST_F(OutputFileTest, ReplacedFileKeepsItsRights) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    const auto rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path_, rights));
    const QFile::Permissions before = QFile::permissions(path_);
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_EQ(QFile::permissions(path_), before);
}

TEST_F(OutputFileTest, ClearedFileBeginsAnew) {
    for (const char* const before : {"", "old"}) {
        if (*before != 0) {
            folder_.Write(QStringLiteral("a.wav"), before);
        }
        OutputFile file;
        ASSERT_EQ(file.Open(path_), Outcome::Ok);
        file.Device().write("much more than follows");
        EXPECT_TRUE(file.Clear());
        file.Device().write("new");
        EXPECT_EQ(file.Commit(), Outcome::Ok);
        EXPECT_EQ(ReadWholeFile(path_), "new");
    }
}

TEST_F(OutputFileTest, DiscardTakesBackANewFile) {
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Discard();
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(OutputFileTest, DiscardKeepsAnExistingFile) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Discard();
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
    EXPECT_EQ(ReadWholeFile(path_), "old");
}

TEST_F(OutputFileTest, LinkStaysALink) {
    folder_.Write(QStringLiteral("true.wav"), "old");
    ASSERT_TRUE(QFile::link(folder_.Path(QStringLiteral("true.wav")), path_));
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Device().write("new");
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_EQ(ReadWholeFile(folder_.Path(QStringLiteral("true.wav"))), "new");
}

TEST_F(OutputFileTest, LinkToAFileThatIsNotThereMakesIt) {
    ASSERT_EQ(symlink("true.wav", QFile::encodeName(path_).constData()), 0);
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    file_.Device().write("new");
    EXPECT_EQ(file_.Commit(), Outcome::Ok);
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_EQ(ReadWholeFile(folder_.Path(QStringLiteral("true.wav"))), "new");
}

TEST_F(OutputFileTest, LinkToItselfIsRefused) {
    ASSERT_EQ(symlink("a.wav", QFile::encodeName(path_).constData()), 0);
    EXPECT_EQ(file_.Open(path_), Outcome::WriteFailed);
}

TEST_F(OutputFileTest, FoldersDevicesAndPipesAreRefused) {
    EXPECT_EQ(OutputFile().Open(QFileInfo(path_).path()), Outcome::WriteFailed);
    EXPECT_EQ(OutputFile().Open(QStringLiteral("/dev/null")), Outcome::WriteFailed);
    EXPECT_EQ(OutputFile().Open(QString()), Outcome::WriteFailed);
    EXPECT_EQ(OutputFile().Open(folder_.Path(QStringLiteral("none/a.wav"))), Outcome::WriteFailed);
    ASSERT_EQ(mkfifo(QFile::encodeName(path_).constData(), 0600), 0);
    EXPECT_EQ(OutputFile().Open(path_), Outcome::WriteFailed);
}

TEST_F(OutputFileTest, WriteProtectedFileIsRefused) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    const QByteArray path = QFile::encodeName(path_);
    ASSERT_EQ(chmod(path.constData(), 0444), 0);
    ASSERT_EQ(chmod(QFile::encodeName(QFileInfo(path_).path()).constData(), 0755), 0);
    // In a process of its own, which can become somebody to whom the file is protected.
    EXPECT_EXIT(
        {
            const uid_t nobody = 65534;
            const bool isBound = geteuid() != 0 || setuid(nobody) == 0;
            const bool isReached = access(path.constData(), R_OK) == 0;
            const bool isRefused = OutputFile().Open(path_) == Outcome::WriteFailed;
            _exit(isBound && isReached && isRefused ? EXIT_SUCCESS : EXIT_FAILURE);
        },
        testing::ExitedWithCode(EXIT_SUCCESS), "");
    EXPECT_EQ(ReadWholeFile(path_), "old");
}

TEST_F(OutputFileTest, FullDiskKeepsTheExistingFile) {
    folder_.Write(QStringLiteral("a.wav"), "old");
    ASSERT_EQ(file_.Open(path_), Outcome::Ok);
    Outcome outcome = Outcome::Ok;
    {
        const SmallDisk disk;
        // Held in the file's buffer, so that no write tells of it.
        EXPECT_EQ(file_.Device().write(QByteArray(16000, 'x')), 16000);
        EXPECT_EQ(file_.Device().write(QByteArray(10000, 'x')), 10000);
        outcome = file_.Commit();
    }
    EXPECT_EQ(outcome, Outcome::WriteFailed);
    EXPECT_EQ(ReadWholeFile(path_), "old");
    EXPECT_EQ(Names(), QStringList{QStringLiteral("a.wav")});
}

} // namespace kestrune
