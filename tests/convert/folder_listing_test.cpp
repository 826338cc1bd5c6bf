#include "convert/folder_listing.h"
#include "convert/output_folder.h"
#include "convert_folders.h"
#include "converter_fixture.h"

#include <QDir>
#include <sys/stat.h>

namespace kestrune::convert {
namespace {

TEST(ListFolder, SortsNamesWithoutRegardToCase) {
    const Folder folder;
    for (const char* name : {"b.mp3", "A.mp3", "C.mp3", "a10.mp3", "a2.mp3"}) {
        folder.Write(QString::fromLatin1(name));
    }
    EXPECT_THAT(ToTexts(ListFolder(folder.Path())),
                ElementsAre("A.mp3", "a10.mp3", "a2.mp3", "b.mp3", "C.mp3"));
}

TEST(ListFolder, LeavesOutFoldersHiddenFilesAndPipes) {
    const Folder folder;
    folder.Write(QStringLiteral("song.mp3"));
    folder.Write(QStringLiteral(".hidden.mp3"));
    QDir(folder.Path()).mkdir(QStringLiteral("album.mp3"));
    ASSERT_EQ(mkfifo(folder.Path(QStringLiteral("pipe.mp3")).toUtf8().constData(), 0600), 0);
    EXPECT_THAT(ToTexts(ListFolder(folder.Path())), ElementsAre("song.mp3"));
}

TEST(ListFolder, OfNoFolderIsEmpty) {
    const Folder folder;
    const QString file = folder.Write(QStringLiteral("song.mp3"));
    EXPECT_TRUE(ListFolder(folder.Path(QStringLiteral("gone"))).isEmpty());
    EXPECT_TRUE(ListFolder(file).isEmpty());
    EXPECT_TRUE(ListFolder(QString()).isEmpty());
}

TEST(HoldsFiles, AgreesWithTheListing) {
    const Folder folder;
    QDir(folder.Path()).mkdir(QStringLiteral("album"));
    EXPECT_FALSE(HoldsFiles(folder.Path()));
    folder.Write(QStringLiteral(".hidden"));
    EXPECT_FALSE(HoldsFiles(folder.Path()));
    folder.Write(QStringLiteral("a"));
    EXPECT_TRUE(HoldsFiles(folder.Path()));
    EXPECT_FALSE(HoldsFiles(QString()));
}

TEST(OutputFolder, EmptyOnePassesAndStaysEmpty) {
    const Folder folder;
    EXPECT_TRUE(IsOutputFolderValid(folder.Path() + u'/'));
    EXPECT_TRUE(AllEntries(folder.Path()).isEmpty());
}

TEST(OutputFolder, OnlyItsProbeComesAndGoes) {
    const Folder folder;
    folder.Write(QStringLiteral("mine.tmp"), "content");
    EXPECT_TRUE(IsOutputFolderValid(folder.Path() + u'/'));
    EXPECT_THAT(ToTexts(AllEntries(folder.Path())), ElementsAre("mine.tmp"));
}

TEST(OutputFolder, OneThatIsGoneDoesNotPass) {
    const Folder folder;
    EXPECT_FALSE(IsOutputFolderValid(folder.Path(QStringLiteral("gone/"))));
    EXPECT_FALSE(QDir(folder.Path(QStringLiteral("gone"))).exists());
}

} // namespace
} // namespace kestrune::convert
