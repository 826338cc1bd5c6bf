#include "main_window/start_up.h"

#include "playlist/ksl_format.h"
#include "support/fake_main_window.h"
#include "support/program_playlist.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::Content;
using rules::MakeRow;
using rules::Playlist;
using rules::Utf8;

class FakeLock : public InstanceLock {
public:
    bool isFree = true;
    bool TryLock() override { return isFree; }
};

class StartUpTest : public testing::Test {
protected:
    bool Load() { return list.house.program.Load(window); }
    QString UpdateFile() const { return list.home.Path(QStringLiteral("associateupdate.src")); }
    // The four bytes of the update record.
    std::string UpdateBytes() const {
        const std::string content = Content(UpdateFile());
        return content.size() < 30003 ? "(none)" : content.substr(29999, 4);
    }
    void WriteUpdateBytes(const QByteArray& bytes) {
        list.home.Write(QStringLiteral("associateupdate.src"), QByteArray(29999, '\0') + bytes);
    }
    void AddRow(int number, const QString& title) {
        list.rows.Append(MakeRow(number, title, QStringLiteral("00:01"), QStringLiteral("0.0m"),
                                 QStringLiteral("/m/"), title + QStringLiteral(".mp3")));
    }

    Playlist list;
    FakeAudioFile& audioFile = *list.house.components.files.first();
    FakeAudioPlayer& audioPlayer = *list.house.components.players.first();
    Transport& transport = list.house.program.transport;
    VolumeKnob& knob = list.house.program.knob;
    FakeMainWindow window;
};

TEST(ProgramState, TellsTitleVersionAndBuild) {
    ProgramState state;
    SetProgramState(state, QStringLiteral("/nowhere"));
    EXPECT_EQ(Utf8(state.AppTitle), "Kestrune ");
    EXPECT_EQ(Utf8(state.AppVersion), "V5.4");
    EXPECT_EQ(state.BuildNumber, 50410);
    EXPECT_EQ(Utf8(state.BuildText), "( Build 50410 )");
    EXPECT_TRUE(state.UpdateAtStartup);
    EXPECT_EQ(state.CurIndex, 0);
    EXPECT_EQ(state.LastIndex, 0);
}

TEST(ProgramState, TheHelpFileLiesInTheProgramsFolder) {
    ProgramState state;
    SetProgramState(state, QStringLiteral("/nowhere"));
    EXPECT_EQ(Utf8(state.AppPath), qgetenv("KESTRUNE_HOME").toStdString());
    EXPECT_EQ(Utf8(state.HelpFile), Utf8(state.AppPath) + "/kestrune.chm");
    for (const QString& folder :
         {state.AppPath, state.WinDir, state.SysDir, state.DesktopDir, state.StartupDir}) {
        EXPECT_FALSE(folder.isEmpty());
        EXPECT_FALSE(folder.endsWith(u'/')) << Utf8(folder);
    }
}

TEST(OnlyInstance, GoesOnWithoutAMessage) {
    FakeLock lock;
    FakeUserPrompts prompts;
    EXPECT_TRUE(IsOnlyInstance(lock, prompts));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST(OnlyInstance, ASecondOneShowsItsMessageAndEnds) {
    FakeLock lock;
    lock.isFree = false;
    FakeUserPrompts prompts;
    EXPECT_FALSE(IsOnlyInstance(lock, prompts));
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(Utf8(prompts.messages[0].text), "This programme is running!");
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Information);
}

TEST_F(StartUpTest, TheWindowTakesItsStepsInOrder) {
    EXPECT_TRUE(Load());
    EXPECT_EQ(window.steps.join(u' '),
              QStringLiteral(
                  "Hide FillColourList PrepareDisplay PrepareSkin PaintSkin SizeAndCentre ShowKnob Show"));
}

TEST_F(StartUpTest, AFirstRunStartsWithAnEmptyListAndTheInitialOptions) {
    EXPECT_TRUE(Load());
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_EQ(list.options.FftType(), 2);
    EXPECT_EQ(list.options.FftResolution(), 2);
    EXPECT_TRUE(list.options.IsModeChecked(PlayMode::Continuous));
    EXPECT_EQ(list.options.Items(), defaultPlaylistItems);
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    EXPECT_TRUE(list.prompts.questions.isEmpty());
    EXPECT_FALSE(list.state.UpdateAtStartup);
    EXPECT_EQ(Utf8(list.state.CurPath), "");
    EXPECT_EQ(UpdateBytes(), std::string("\x00\x00\x01\x00", 4));
}

TEST_F(StartUpTest, WithoutASoundDeviceYesStartsTheProgram) {
    audioPlayer.deviceCount = 0;
    list.prompts.answers = {true};
    EXPECT_TRUE(Load());
    ASSERT_EQ(list.prompts.questions.size(), 1);
    EXPECT_EQ(Utf8(list.prompts.questions[0].text),
              "There is no Audio Device installed on this machine, continue anyway? ");
    EXPECT_EQ(list.prompts.questions[0].icon, PromptIcon::Warning);
    EXPECT_EQ(window.steps.size(), 8);
    EXPECT_EQ(window.steps.last(), QStringLiteral("Show"));
}

TEST_F(StartUpTest, WithoutASoundDeviceNoEndsItAtOnce) {
    audioPlayer.deviceCount = 0;
    list.prompts.answers = {false};
    EXPECT_FALSE(Load());
    EXPECT_EQ(window.steps, QStringList{QStringLiteral("Hide")});
    EXPECT_TRUE(QDir(list.home.Path()).isEmpty()) << "no file is written";
}

TEST_F(StartUpTest, TheFirstUsableDeviceStaysSelected) {
    audioPlayer.deviceCount = 4;
    audioPlayer.unusable = {0, 1};
    EXPECT_TRUE(Load());
    EXPECT_EQ(audioPlayer.DeviceIndex(), 2);
    EXPECT_TRUE(list.prompts.questions.isEmpty());
}

TEST_F(StartUpTest, WithoutAUsableDeviceTheLastOneStaysSelectedAndNobodyIsAsked) {
    audioPlayer.deviceCount = 3;
    audioPlayer.unusable = {0, 1, 2};
    EXPECT_TRUE(Load());
    EXPECT_EQ(audioPlayer.DeviceIndex(), 2);
    EXPECT_TRUE(list.prompts.questions.isEmpty());
}

TEST_F(StartUpTest, TheReaderGetsItsTwoSettings) {
    EXPECT_TRUE(Load());
    EXPECT_EQ(audioFile.calls,
              (QStringList{QStringLiteral("SetBlockOption 1 -1"), QStringLiteral("SetBlockOption 2 2")}));
}

TEST_F(StartUpTest, NothingPlaysAtTheStart) {
    EXPECT_TRUE(Load());
    EXPECT_FALSE(audioPlayer.isRunning);
    EXPECT_FALSE(audioPlayer.calls.contains(QStringLiteral("Prepare")));
}

TEST_F(StartUpTest, TheListIsLoadedBeforeTheSkinAndTheColumnsAreSetBeforeItIsPainted) {
    AddRow(1, QStringLiteral("a"));
    list.files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    list.rows.Clear();
    list.options.SetPlaylistItem(-1);
    list.options.SetPlaylistItem(1);
    list.options.SetPlaylistItem(1);
    list.options.SetPlaylistItem(2);
    const ColumnWidths stored = list.options.Columns();
    QStringList seen;
    window.onStep = [&](const QString& step) {
        if (step == QLatin1String("PrepareDisplay") || step == QLatin1String("PrepareSkin")) {
            seen << step + QStringLiteral(" %1").arg(list.rows.Count());
        }
        if (step == QLatin1String("PrepareSkin")) {
            seen << (list.options.Columns() == startColumnWidths ? QStringLiteral("start widths")
                                                                 : QStringLiteral("other widths"));
        }
        if (step == QLatin1String("PaintSkin")) {
            seen << (list.options.Columns() == stored ? QStringLiteral("stored widths")
                                                      : QStringLiteral("other widths"));
        }
    };
    EXPECT_TRUE(Load());
    EXPECT_EQ(seen.join(u','), QStringLiteral("PrepareDisplay 0,PrepareSkin 1,start widths,stored widths"));
}

TEST_F(StartUpTest, TheUpdateFlagFallsBeforeTheWindowShows) {
    list.state.UpdateAtStartup = true;
    bool atShow = true;
    window.onStep = [&](const QString& step) {
        if (step == QLatin1String("Show")) {
            atShow = list.state.UpdateAtStartup;
        }
    };
    EXPECT_TRUE(Load());
    EXPECT_FALSE(atShow);
}

TEST_F(StartUpTest, TheListStandsInIndexOrderAscending) {
    AddRow(2, QStringLiteral("b"));
    AddRow(1, QStringLiteral("a"));
    list.rows.SetAscending(false);
    EXPECT_TRUE(Load());
    EXPECT_EQ(Column(list.rows, RowText), (std::vector<std::string>{"1.a", "2.b"}));
    EXPECT_TRUE(list.rows.IsAscending());
}

TEST_F(StartUpTest, TheKnobGivesTheStartVolume) {
    VolumeKnob expected{KnobGeometry{}};
    ASSERT_TRUE(expected.MoveValumeButton(1, 640, 330));
    EXPECT_TRUE(Load());
    EXPECT_EQ(knob.Volume(), expected.Volume());
    EXPECT_GT(knob.Volume(), 0);
}

TEST_F(StartUpTest, TheDialogFolderIsFetched) {
    list.state.CurPath = QStringLiteral("/music/");
    list.options.SaveGetCurPath(QStringLiteral("SAVE"));
    list.state.CurPath.clear();
    EXPECT_TRUE(Load());
    EXPECT_EQ(Utf8(list.state.CurPath), "/music/");
}

TEST_F(StartUpTest, AnUpdateRecordWithoutTheCheckIsLeftAlone) {
    WriteUpdateBytes(QByteArray("\x00\x00\x05\x00", 4));
    EXPECT_TRUE(Load());
    EXPECT_EQ(UpdateBytes(), std::string("\x00\x00\x05\x00", 4));
}

TEST_F(StartUpTest, AnUpdateRecordWithTheCheckIsWrittenBackAsDone) {
    WriteUpdateBytes(QByteArray("\xFF\xFF\x05\x00", 4));
    EXPECT_TRUE(Load());
    EXPECT_EQ(UpdateBytes(), std::string("\xFF\xFF\x01\x00", 4));
}

TEST_F(StartUpTest, TheUpdateRecordIsFoundInAnotherSpelling) {
    list.home.Write(QStringLiteral("AssociateUpdate.SRC"), QByteArray(29999, 'k') + QByteArray(4, '\0'));
    EXPECT_TRUE(Load());
    EXPECT_EQ(Content(UpdateFile()), "(no file)");
    EXPECT_EQ(Content(list.home.Path(QStringLiteral("AssociateUpdate.SRC"))),
              std::string(29999, 'k') + std::string("\x00\x00\x01\x00", 4));
}

TEST_F(StartUpTest, AFolderWhereNothingCanBeWrittenStartsAllTheSame) {
    list.state.AppPath = list.home.Write(QStringLiteral("file")) + QStringLiteral("/below");
    EXPECT_TRUE(Load());
    EXPECT_EQ(window.steps.last(), QStringLiteral("Show"));
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

TEST_F(StartUpTest, ClosingStoresTheListInIndexOrder) {
    EXPECT_TRUE(Load());
    AddRow(2, QStringLiteral("b"));
    AddRow(1, QStringLiteral("a"));
    UnloadMainWindow(list.rows, list.files);
    EXPECT_EQ(Column(list.rows, RowText), (std::vector<std::string>{"1.a", "2.b"}));
    EXPECT_TRUE(list.rows.IsAscending());
    const std::vector<PlaylistRow> stored = DecodeKsl(QByteArray::fromStdString(Content(list.DefaultFile())));
    ASSERT_EQ(stored.size(), 2U);
    EXPECT_EQ(Utf8(stored[0].fields[RowText]), "a");
    EXPECT_EQ(Utf8(stored[1].fields[RowText]), "b");
}

TEST_F(StartUpTest, ClosingDuringPlaybackDoesNotStopIt) {
    EXPECT_TRUE(Load());
    const QString path = list.home.Write(QStringLiteral("a.mp3"));
    list.rows.Append(MakeRow(1, QStringLiteral("a"), QStringLiteral("00:01"), QStringLiteral("0.0m"),
                             list.home.Path() + u'/', QStringLiteral("a.mp3")));
    audioFile.files.insert(path, {QByteArray(1000, '\1'), 1000, 1, {}, 1});
    transport.PlayCurrentItem();
    ASSERT_TRUE(transport.State().IsPlaying);
    const QStringList before = audioPlayer.calls;
    UnloadMainWindow(list.rows, list.files);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_EQ(audioPlayer.calls, before);
    EXPECT_TRUE(list.prompts.questions.isEmpty());
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

} // namespace
} // namespace kestrune
