// The tag editor over a fake prober.
#include "tag_editor_fixture.h"

namespace kestrune {
namespace {

class TagEditorTest : public TagEditorFixture {
protected:
    // The user types a title.
    void TypeTitle(const QString& title) {
        TagControls controls = editor.Controls();
        controls.infoTitle = title;
        editor.Edit(controls);
    }
    void TypeNumbers(const QString& year, const QString& track) {
        TagControls controls = editor.Controls();
        controls.infoYear = year;
        controls.infoTrack = track;
        editor.Edit(controls);
    }

    TagEditor editor{{state, rows, information, prompts}};
};

TEST_F(TagEditorTest, LoadShowsTheCurrentRow) {
    int shown = 0;
    QObject::connect(&editor, &TagEditor::Shown, [&shown] { ++shown; });
    editor.Load();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(editor.CurrentRowIndex(), 2);
    EXPECT_EQ(editor.AFile(), QStringLiteral("/music/two.mp3"));
    // The kind of tag is the object's own at the start.
    EXPECT_EQ(information.calls, QStringList("ReadTagFromFile /music/two.mp3"));
}

TEST_F(TagEditorTest, EveryPropertyIsShown) {
    editor.Load();
    const TagControls& controls = editor.Controls();
    EXPECT_EQ(controls.infoTitle, QStringLiteral("Harbour steps"));
    EXPECT_EQ(controls.infoArtist, QStringLiteral("Tern"));
    EXPECT_EQ(controls.infoAlbum, QStringLiteral("Coast"));
    EXPECT_EQ(controls.infoGenre, 17);
    EXPECT_EQ(controls.infoGenreS, QStringLiteral("Shanty"));
    EXPECT_EQ(controls.infoCopyright, QStringLiteral("2004 Tern"));
    EXPECT_EQ(controls.infoComment, QStringLiteral("By night"));
    EXPECT_EQ(controls.infoYear, QStringLiteral("2004"));
    EXPECT_EQ(controls.infoTrack, QStringLiteral("7"));
    EXPECT_EQ(controls.infoComposer, QStringLiteral("A. Gull"));
    EXPECT_EQ(controls.infoURL, QStringLiteral("http://tern.example/"));
    EXPECT_EQ(controls.infoEncodedBy, QStringLiteral("Me"));
    EXPECT_EQ(controls.infoOriginalArtist, QStringLiteral("Auk"));
}

TEST_F(TagEditorTest, TechnicalDataBearTheirUnits) {
    editor.Load();
    const TechnicalTexts& technical = editor.Technical();
    EXPECT_EQ(technical.infoFormatString, QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo"));
    EXPECT_EQ(technical.infoFrequency, QStringLiteral("44100 Hz"));
    EXPECT_EQ(technical.infoBitrate, QStringLiteral("128000 bps"));
    EXPECT_EQ(technical.infoDuration, QStringLiteral("2000 ms"));
    EXPECT_EQ(technical.infoChannels, QStringLiteral("2"));
    EXPECT_EQ(technical.infoSamples, QStringLiteral("88200"));
    EXPECT_EQ(technical.infoSize, QStringLiteral("32000"));
    EXPECT_EQ(technical.infoBitsPerSample, QStringLiteral("16"));
    EXPECT_EQ(technical.infoFormatTag, QStringLiteral("85"));
}

TEST_F(TagEditorTest, RowZeroCountsAsOne) {
    editor.GetInfo(0);
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
    EXPECT_EQ(editor.AFile(), QStringLiteral("/music/one.mp3"));
}

TEST_F(TagEditorTest, PreviousAndNextGoRoundTheEnds) {
    editor.GetInfo(1);
    editor.Previous();
    EXPECT_EQ(editor.CurrentRowIndex(), 3);
    EXPECT_EQ(editor.AFile(), QStringLiteral("/other/three.ogg"));
    editor.Next();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
    editor.Next();
    EXPECT_EQ(editor.CurrentRowIndex(), 2);
    editor.Previous();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
}

TEST_F(TagEditorTest, TheOnlyRowIsShownAgain) {
    rows.Remove(3);
    rows.Remove(1);
    editor.GetInfo(1);
    int shown = 0;
    QObject::connect(&editor, &TagEditor::Shown, [&shown] { ++shown; });
    editor.Previous();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
    editor.Next();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(editor.AFile(), QStringLiteral("/music/two.mp3"));
}

TEST_F(TagEditorTest, FillingIsNoEditAndTheFirstChangeIs) {
    editor.Load();
    EXPECT_FALSE(editor.IsUpdateEnabled());
    QList<bool> told;
    QObject::connect(&editor, &TagEditor::UpdateEnabled, [&told](bool enabled) { told << enabled; });
    TypeTitle(QStringLiteral("H"));
    EXPECT_TRUE(editor.IsUpdateEnabled());
    EXPECT_EQ(told, QList<bool>({true}));
    editor.Next();
    EXPECT_FALSE(editor.IsUpdateEnabled());
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Slow tide"));
}

TEST_F(TagEditorTest, TheOtherTagComesUpAndEditsAreGone) {
    editor.Load();
    TypeTitle(QStringLiteral("Unsaved"));
    editor.ChooseTagKind(1);
    EXPECT_EQ(information.TagVersion(), TagKind::Id3v2);
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Harbour steps (long)"));
    editor.ChooseTagKind(0);
    EXPECT_EQ(information.TagVersion(), TagKind::Id3v1);
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Harbour steps"));
    EXPECT_FALSE(information.calls.contains(QStringLiteral("SaveTagToFile /music/two.mp3")));
}

TEST_F(TagEditorTest, TheTagKindStaysFromRowToRow) {
    editor.Load();
    editor.ChooseTagKind(1);
    editor.Next();
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Slow tide (long)"));
    EXPECT_EQ(information.calls.filter(QStringLiteral("SetTagVersion")).size(), 1);
}

TEST_F(TagEditorTest, UpdateWritesEveryProperty) {
    editor.Load();
    TagControls typed;
    typed.infoTitle = QStringLiteral("T");
    typed.infoArtist = QStringLiteral("Ar");
    typed.infoAlbum = QStringLiteral("Al");
    typed.infoGenre = 0;
    typed.infoGenreS = QStringLiteral("G");
    typed.infoCopyright = QStringLiteral("Cr");
    typed.infoComment = QStringLiteral("Cm");
    typed.infoYear = QStringLiteral("1999");
    typed.infoTrack = QStringLiteral("12");
    typed.infoComposer = QStringLiteral("Cp");
    typed.infoURL = QStringLiteral("U");
    typed.infoEncodedBy = QStringLiteral("E");
    typed.infoOriginalArtist = QStringLiteral("O");
    editor.Edit(typed);
    editor.Update();
    const TagFields& stored = Stored("/music/two.mp3");
    EXPECT_EQ(stored.title, typed.infoTitle);
    EXPECT_EQ(stored.artist, typed.infoArtist);
    EXPECT_EQ(stored.album, typed.infoAlbum);
    EXPECT_EQ(stored.genre, 0);
    EXPECT_EQ(stored.genreText, typed.infoGenreS);
    EXPECT_EQ(stored.copyright, typed.infoCopyright);
    EXPECT_EQ(stored.comment, typed.infoComment);
    EXPECT_EQ(stored.year, 1999);
    EXPECT_EQ(stored.track, 12);
    EXPECT_EQ(stored.composer, typed.infoComposer);
    EXPECT_EQ(stored.url, typed.infoURL);
    EXPECT_EQ(stored.encodedBy, typed.infoEncodedBy);
    EXPECT_EQ(stored.originalArtist, typed.infoOriginalArtist);
}

TEST_F(TagEditorTest, UpdateRenamesTheRowAndSaysSo) {
    editor.Load();
    int changed = 0;
    QObject::connect(&rows, &PlaylistRows::dataChanged, [&changed] { ++changed; });
    TypeTitle(QStringLiteral("St. Elmo"));
    editor.Update();
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.Tern - St. Elmo"));
    EXPECT_EQ(RowTextOf(1), QStringLiteral("1.Old one"));
    EXPECT_EQ(changed, 1);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, QStringLiteral("Updated Successfully!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Warning);
    EXPECT_TRUE(editor.IsUpdateEnabled());
    // A second time the number is still what stands before the first point.
    editor.Update();
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.Tern - St. Elmo"));
}

TEST_F(TagEditorTest, ARowTextWithoutAPointKeepsNothing) {
    rows.SetField(2, RowText, QStringLiteral("no number"));
    editor.Load();
    editor.Update();
    EXPECT_EQ(RowTextOf(2), QStringLiteral("Tern - Harbour steps"));
}

TEST_F(TagEditorTest, TheFileInPlayIsNotRewritten) {
    state.LastIndex = 2;
    editor.Load();
    TypeTitle(QStringLiteral("Unsaved"));
    editor.Update();
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, QStringLiteral("Can't update current file!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Warning);
    EXPECT_EQ(information.calls, QStringList("ReadTagFromFile /music/two.mp3"));
    EXPECT_EQ(information.Tag().title, QStringLiteral("Harbour steps"));
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.Old two"));
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Unsaved"));
}

TEST_F(TagEditorTest, OnlyThePathTellsTheFileInPlay) {
    state.LastIndex = 1;
    editor.Load();
    editor.Update();
    EXPECT_EQ(prompts.messages.last().text, QStringLiteral("Updated Successfully!"));
    // Row 1 again, as a file that was chosen by hand.
    prompts.filesToChoose = {{QStringLiteral("/music/one.mp3")}};
    editor.ImageinPath();
    editor.Update();
    EXPECT_EQ(prompts.messages.last().text, QStringLiteral("Can't update current file!"));
}

TEST_F(TagEditorTest, AFailedSaveReportsSuccess) {
    information.saveOutcome = Outcome::WriteFailed;
    editor.Load();
    TypeTitle(QStringLiteral("New"));
    editor.Update();
    EXPECT_EQ(prompts.messages.last().text, QStringLiteral("Updated Successfully!"));
    EXPECT_EQ(Stored("/music/two.mp3").title, QStringLiteral("Harbour steps"));
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.Tern - New"));
}

TEST_F(TagEditorTest, TextThatIsNoNumberLeavesOnlyItsOwnProperty) {
    editor.Load();
    TypeNumbers(QStringLiteral("MMIV"), QStringLiteral("9"));
    editor.Update();
    EXPECT_EQ(Stored("/music/two.mp3").year, 2004);
    EXPECT_EQ(Stored("/music/two.mp3").track, 9);
    TypeNumbers(QStringLiteral("1987"), QStringLiteral("3/12"));
    editor.Update();
    EXPECT_EQ(Stored("/music/two.mp3").year, 1987);
    EXPECT_EQ(Stored("/music/two.mp3").track, 9);
    TypeNumbers({}, QStringLiteral("40000"));
    editor.Update();
    EXPECT_EQ(Stored("/music/two.mp3").year, 1987);
    EXPECT_EQ(Stored("/music/two.mp3").track, 9);
}

TEST_F(TagEditorTest, AFileThatCannotBeReadLeavesWhatWasThere) {
    information.files[QStringLiteral("/other/three.ogg")].valid = false;
    editor.Load();
    TypeTitle(QStringLiteral("Unsaved"));
    editor.Next();
    EXPECT_EQ(editor.CurrentRowIndex(), 3);
    EXPECT_EQ(editor.AFile(), QStringLiteral("/other/three.ogg"));
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Harbour steps"));
    EXPECT_EQ(editor.Controls().infoComposer, QStringLiteral("A. Gull"));
    EXPECT_EQ(editor.Technical().infoSize, QStringLiteral("32000"));
    EXPECT_FALSE(editor.IsUpdateEnabled());
}

TEST_F(TagEditorTest, AskingForAnotherFile) {
    editor.Load();
    editor.ImageinPath();
    ASSERT_EQ(prompts.choices.size(), 1);
    EXPECT_EQ(prompts.choices[0].title, QStringLiteral("Open Audio File"));
    EXPECT_EQ(prompts.choices[0].filter,
              QStringLiteral("All Supported Files|*.mp3;*.mp2;*.mpeg,*.mpc;*.mp+;*.wma;*.wav;*.ogg,*.avi|"
                             "MPEG Files(*.mp3;*.mp2;*.mpeg;*.mpc;*.mp+)|*.mp3;*.mp2;*.mpeg;*.mpc;*.mp+|"
                             "WMA Files(*.wma)|*.wma|Wav Files (*.wav)|*.wav|"
                             "Ogg Vorbis Files(*.ogg)|*.ogg|AVI Files(*.avi)|*.avi|All Files(*.*)|*.*"));
    EXPECT_EQ(prompts.choices[0].startFolder, QStringLiteral("/music/"));
    EXPECT_FALSE(prompts.choices[0].multiple);
    // A cancel leaves everything.
    EXPECT_EQ(editor.AFile(), QStringLiteral("/music/two.mp3"));
    EXPECT_EQ(information.calls.size(), 1);
}

TEST_F(TagEditorTest, WithoutAFileTheChoiceBeginsInTheCurrentFolder) {
    rows.Clear();
    editor.Load();
    EXPECT_EQ(editor.AFile(), QString());
    editor.ImageinPath();
    EXPECT_EQ(prompts.choices[0].startFolder, QString());
    editor.Previous();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
    editor.Next();
    EXPECT_EQ(editor.CurrentRowIndex(), 1);
}

TEST_F(TagEditorTest, AnotherFileKeepsTheRowWhichItRenames) {
    editor.Load();
    prompts.filesToChoose = {{QStringLiteral("/other/three.ogg")}};
    editor.ImageinPath();
    EXPECT_EQ(editor.AFile(), QStringLiteral("/other/three.ogg"));
    EXPECT_EQ(editor.Controls().infoTitle, QStringLiteral("Slow tide"));
    EXPECT_EQ(editor.CurrentRowIndex(), 2);
    EXPECT_FALSE(editor.IsUpdateEnabled());
    editor.Update();
    EXPECT_EQ(information.calls.last(), QStringLiteral("SaveTagToFile /other/three.ogg"));
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.Tern - Slow tide"));
    EXPECT_EQ(RowTextOf(3), QStringLiteral("3.Old three"));
}

TEST_F(TagEditorTest, AGenreThatIsNotInTheListStays) {
    Stored("/music/two.mp3").genre = 255;
    editor.Load();
    EXPECT_EQ(editor.Controls().infoGenre, -1);
    editor.Update();
    EXPECT_EQ(Stored("/music/two.mp3").genre, 255);
    Stored("/music/two.mp3").genre = 148;
    editor.Load();
    EXPECT_EQ(editor.Controls().infoGenre, -1);
    Stored("/music/two.mp3").genre = 147;
    editor.Load();
    EXPECT_EQ(editor.Controls().infoGenre, 147);
}

TEST_F(TagEditorTest, GenreNamesAreTheObjects) {
    EXPECT_EQ(editor.GenreName(0), QStringLiteral("Genre 0"));
    EXPECT_EQ(editor.GenreName(TagEditor::genreCount - 1), QStringLiteral("Genre 147"));
}

} // namespace
} // namespace kestrune
