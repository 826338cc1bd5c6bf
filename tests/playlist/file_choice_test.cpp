#include "playlist/file_choice.h"

#include "support/fake_user_prompts.h"
#include "support/rule_support.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::Utf8;

// "label|patterns" of each entry of a filter.
std::vector<std::string> Filters(FileDialog dialog) {
    std::vector<std::string> entries;
    const QStringList parts = FileChoiceFor(dialog).filter.split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        entries.push_back(Utf8(parts[i] + u'|' + parts[i + 1]));
    }
    return entries;
}

const std::string playlistPatterns = "*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx";

TEST(FileFilters, OfAddingFiles) {
    EXPECT_EQ(Filters(FileDialog::AddFiles),
              (std::vector<std::string>{
                  "All Supported Formats|*.wav;*.mp3;*.mp2;*.mp1;*.mpeg;*.vox;*.raw;*.pcm;*.gsm;*.adpcm;"
                  "*.g726;*.g721;*.g723;*.ogg;*.wma;*.mpc;*.mp+;*.dss;*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx",
                  "All Supported Playlists(*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx)|" + playlistPatterns,
                  "MPEG Files (*.mp3;*.mp2;*.mp1;*.mpeg)|*.mp3;*.mp2;*.mp1;*.mpeg",
                  "WMA Files (*.wma)|*.wma",
                  "WAV Files (*.wav)|*.wav",
                  "Dialogic ADPCM Files (*.vox)|*.vox",
                  "Raw Files (*.raw;*.pcm;*.gsm;*.adpcm)|*.raw;*.pcm;*.gsm;*.adpcm",
                  "CCUIT G726 Files (*.g726)|*.g726",
                  "CCUIT G721 Files (*.g721)|*.g721",
                  "CCUIT G721 Files (*.g723)|*.g723",
                  "Ogg Vorbis Files (*.ogg)|*.ogg",
                  "MPPlus Files (*.mpc;*.mp+)|*.mpc;*.mp+",
                  "DSS Files (*.dss)|*.dss",
                  "All Files (*.*)|*.*",
              }));
}

TEST(FileFilters, OfAddingFilesForBurning) {
    EXPECT_EQ(Filters(FileDialog::AddForBurning), (std::vector<std::string>{
                                                      "All Supported Audio Formats|*.mp3;*.wma;*.wav;*.ogg",
                                                      "MP3 Files (*.mp3)|*.mp3",
                                                      "WMA Files (*.wma)|*.wma",
                                                      "WAV Files (*.wav)|*.wav",
                                                      "Ogg Vorbis Files (*.ogg)|*.ogg",
                                                  }));
}

TEST(FileFilters, OfOpeningAndSavingAPlaylist) {
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::OpenPlaylist).filter),
              "All Supported Playlists(*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx)|" + playlistPatterns +
                  "|Playlist Files (*.ksl)|*.ksl"
                  "|Winamp M3U Playlist(*.m3u)|*.m3u"
                  "|Winamp PLS Playlist(*.pls)|*.pls"
                  "|Media Player ASX Playlist(*.asx)|*.asx"
                  "|Media Player WVX Playlist(*.wvx)|*.wvx"
                  "|Media Player WAX Playlist(*.wax)|*.wax"
                  "|All Files (*.*)|*.*");
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::SavePlaylist).filter),
              Utf8(FileChoiceFor(FileDialog::OpenPlaylist).filter));
}

TEST(FileChoiceFor, TheAddDialogsTakeSeveralFilesThatExist) {
    for (const FileDialog dialog : {FileDialog::AddFiles, FileDialog::AddForBurning}) {
        const FileChoice choice = FileChoiceFor(dialog);
        EXPECT_TRUE(choice.multiple);
        EXPECT_TRUE(choice.mustExist);
        EXPECT_FALSE(choice.save);
    }
}

TEST(FileChoiceFor, EachDialogHasItsTitle) {
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::AddFiles).title), "Add audio files");
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::AddForBurning).title), "Add audio files for burning");
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::OpenPlaylist).title), "Open playlist");
    EXPECT_EQ(Utf8(FileChoiceFor(FileDialog::SavePlaylist).title), "Save playlist");
}

TEST(FileChoiceFor, OpeningNeedsAFileThatExistsAndSavingDoesNot) {
    EXPECT_TRUE(FileChoiceFor(FileDialog::OpenPlaylist).mustExist);
    EXPECT_FALSE(FileChoiceFor(FileDialog::OpenPlaylist).multiple);
    EXPECT_FALSE(FileChoiceFor(FileDialog::OpenPlaylist).save);
    EXPECT_FALSE(FileChoiceFor(FileDialog::SavePlaylist).mustExist);
    EXPECT_TRUE(FileChoiceFor(FileDialog::SavePlaylist).save);
}

class ShowFileDialogTest : public testing::Test {
protected:
    ShowFileDialogTest() { state.AppPath = home.Path(); }
    ChosenFiles Show(FileDialog dialog, const QStringList& chosen) {
        if (!chosen.isEmpty()) {
            prompts.filesToChoose = {chosen};
        }
        return ShowFileDialog(dialog, state, options, prompts);
    }
    std::string StoredFolder() {
        ProgramState later;
        later.AppPath = home.Path();
        Options(later).SaveGetCurPath(QStringLiteral("GET"));
        return Utf8(later.CurPath);
    }
    Folder home;
    ProgramState state;
    Options options{state};
    FakeUserPrompts prompts;
};

TEST_F(ShowFileDialogTest, StartsInTheFolderLastUsed) {
    state.CurPath = QStringLiteral("/music/");
    Show(FileDialog::AddFiles, {});
    ASSERT_EQ(prompts.choices.size(), 1);
    EXPECT_EQ(Utf8(prompts.choices[0].startFolder), "/music/");
    EXPECT_EQ(Utf8(prompts.choices[0].title), "Add audio files");
}

TEST_F(ShowFileDialogTest, WithoutOneItStartsInTheCurrentFolderAndKeepsIt) {
    Show(FileDialog::OpenPlaylist, {});
    EXPECT_EQ(Utf8(prompts.choices[0].startFolder), Utf8(QDir::currentPath()));
    EXPECT_EQ(Utf8(state.CurPath), Utf8(QDir::currentPath()));
}

TEST_F(ShowFileDialogTest, OneFileGivesFolderAndNameAndTheFolderIsStored) {
    const ChosenFiles chosen = Show(FileDialog::AddFiles, {QStringLiteral("/music/a/song.mp3")});
    EXPECT_EQ(Utf8(chosen.path), "/music/a/");
    EXPECT_EQ(Utf8(chosen.file), "song.mp3");
    EXPECT_TRUE(chosen.list.isEmpty());
    EXPECT_EQ(Utf8(state.CurPath), "/music/a/");
    EXPECT_EQ(StoredFolder(), "/music/a/");
}

TEST_F(ShowFileDialogTest, SeveralFilesGiveAListInTheOrderOfChoice) {
    const QStringList files = {QStringLiteral("/m/c.mp3"), QStringLiteral("/m/a.mp3"),
                               QStringLiteral("/m/b.mp3")};
    const ChosenFiles chosen = Show(FileDialog::AddFiles, files);
    EXPECT_EQ(chosen.list, files);
    EXPECT_TRUE(chosen.path.isEmpty());
    EXPECT_TRUE(chosen.file.isEmpty());
    EXPECT_EQ(StoredFolder(), "/m/");
}

TEST_F(ShowFileDialogTest, ACancelGivesNothingAndStoresNothing) {
    state.CurPath = QStringLiteral("/music/");
    const ChosenFiles chosen = Show(FileDialog::SavePlaylist, {});
    EXPECT_TRUE(chosen.path.isEmpty());
    EXPECT_TRUE(chosen.file.isEmpty());
    EXPECT_TRUE(chosen.list.isEmpty());
    EXPECT_EQ(Utf8(state.CurPath), "/music/");
    EXPECT_EQ(Content(home.Path(QStringLiteral("Options.dat"))), "(no file)");
}

TEST(IsAudioFile, TakesEachEndingOfTheTableButTheOneOfTwoLetters) {
    const Folder folder;
    for (const char* ending : {".wav", ".mp3", ".mp2", ".mp1", ".mpeg", ".vox", ".raw", ".pcm", ".gsm",
                               ".g726", ".g721", ".g723", ".ogg", ".wma", ".mpc", ".dss"}) {
        EXPECT_TRUE(IsAudioFile(folder.Write(QStringLiteral("song") + QLatin1String(ending)))) << ending;
    }
    EXPECT_FALSE(IsAudioFile(folder.Write(QStringLiteral("song.mp"))));
}

// Its six characters are more than the test looks at.
TEST(IsAudioFile, AnEndingOfFiveLettersIsNotReached) {
    const Folder folder;
    EXPECT_FALSE(IsAudioFile(folder.Write(QStringLiteral("song.adpcm"))));
}

TEST(IsAudioFile, FilesWithAPlusFailAlthoughTheDialogOffersThem) {
    const Folder folder;
    EXPECT_FALSE(IsAudioFile(folder.Write(QStringLiteral("song.mp+"))));
}

TEST(IsAudioFile, TheCaseOfTheEndingDoesNotMatter) {
    const Folder folder;
    EXPECT_TRUE(IsAudioFile(folder.Write(QStringLiteral("SONG.MP3"))));
    EXPECT_TRUE(IsAudioFile(folder.Write(QStringLiteral("Song.MpEg"))));
}

TEST(IsAudioFile, OtherEndingsPlaylistsAndNamesWithoutOneFail) {
    const Folder folder;
    for (const char* name : {"a.txt", "a.m3u", "a.ksl", "a.flac", "mp3", "wav", "a.mp3.bak"}) {
        EXPECT_FALSE(IsAudioFile(folder.Write(QString::fromUtf8(name)))) << name;
    }
}

TEST(IsAudioFile, AFileThatDoesNotExistAndAFolderFail) {
    const Folder folder;
    EXPECT_FALSE(IsAudioFile(folder.Path(QStringLiteral("gone.mp3"))));
    ASSERT_TRUE(QDir().mkpath(folder.Path(QStringLiteral("folder.mp3"))));
    EXPECT_FALSE(IsAudioFile(folder.Path(QStringLiteral("folder.mp3"))));
    EXPECT_FALSE(IsAudioFile(QString()));
}

} // namespace
} // namespace kestrune
