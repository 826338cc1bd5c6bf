// What the rules tell and ask the user goes through the translation, and nothing that they store does.
#include "convert/converter_fixture.h"
#include "editors/tag_editor_fixture.h"
#include "encoder_options/ogg_dialog_rule.h"
#include "playback/equalizer_bands.h"
#include "playlist/playlist_totals.h"
#include "support/fake_main_window.h"
#include "support/marking_translator.h"
#include "support/rule_support.h"
#include "support/test_program.h"

#include <QDir>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::Utf8;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

void ExpectMarked(const QString& text) {
    EXPECT_TRUE(text.contains(openingMark) && text.contains(closingMark)) << Utf8(text);
}

// How many texts the user was shown: each of them marked. The name of the program is the same everywhere.
int LookAt(const FakeUserPrompts& prompts) {
    int count = 0;
    const auto look = [&count](const QString& text) {
        ++count;
        ExpectMarked(text);
    };
    for (const auto& boxes : {prompts.messages, prompts.questions}) {
        for (const FakeUserPrompts::Shown& box : boxes) {
            look(box.text);
            EXPECT_EQ(Utf8(box.caption), Utf8(defaultCaption));
        }
    }
    for (const QString& title : prompts.folderTitles) {
        look(title);
    }
    for (const FileChoice& choice : prompts.choices) {
        if (!choice.title.isEmpty()) {
            look(choice.title);
        }
        // "label|patterns|label|patterns"
        const QStringList parts = choice.filter.split(u'|');
        for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
            look(parts[i]);
            EXPECT_FALSE(parts[i + 1].contains(openingMark)) << Utf8(parts[i + 1]);
        }
    }
    return count;
}

// The marks, as a file in UTF-8 would hold them.
const std::string markBytes = Utf8(QString(openingMark));

class TranslatedProgram : protected Marked, public testing::Test {
protected:
    TranslatedProgram() {
        program.state.AppPath = home.Path();
        program.state.CurPath = music.Path() + u'/';
    }
    FakeUserPrompts& Prompts() { return program.components.prompts; }
    Program& Rules() { return program.program; }
    void AddRow(const QString& name) {
        Rules().rows.Append(rules::MakeRow(Rules().rows.Count() + 1, name, QStringLiteral("01:00"),
                                           QStringLiteral("1.0m"), music.Path() + u'/', name));
    }
    void ByDialog(const char* operation, const QString& file) {
        Prompts().filesToChoose = {{file}};
        Rules().files.OpenSavePlayList(QLatin1String(operation), false);
    }
    // Every file in the program's folder and in that of the music.
    std::vector<std::string> Stored() const {
        std::vector<std::string> contents;
        for (const Folder* folder : {&home, &music}) {
            for (const QString& name : QDir(folder->Path()).entryList(QDir::Files)) {
                contents.push_back(Content(folder->Path(name)));
            }
        }
        return contents;
    }

    Folder home;
    Folder music;
    TestProgram<> program;
};

TEST_F(TranslatedProgram, AsksAndTellsAboutPlaylists) {
    for (const char* name : {"bad.m3u", "bad.pls", "bad.asx"}) {
        ByDialog("OPEN", music.Write(QLatin1String(name), "nothing of the kind\r\nat all\r\n"));
    }
    EXPECT_EQ(Prompts().messages.size(), 3);
    AddRow(QStringLiteral("a.mp3"));
    for (const char* name : {"list.ksl", "list.m3u", "list.pls", "list.asx"}) {
        ByDialog("SAVE", music.Path(QLatin1String(name)));
    }
    EXPECT_EQ(Prompts().messages.size(), 7);
    music.Write(QStringLiteral("noise.mp3"), "x");
    Prompts().filesToChoose = {{music.Path(QStringLiteral("noise.mp3"))}};
    Rules().files.AddFilesByDialog();
    EXPECT_EQ(Prompts().messages.size(), 8);
    Rules().rows.SetSelected(1, true);
    Rules().editing.DelFilefromList();
    EXPECT_EQ(Prompts().questions.size(), 1);
    // Eight messages, a question, eight titles, and their filters.
    EXPECT_EQ(LookAt(Prompts()), 8 + 1 + 8 + 7 * 8 + 14);
    EXPECT_THAT(Stored(), Each(Not(HasSubstr(markBytes))));
}

TEST_F(TranslatedProgram, HasOptionsAndListsOnDiskThatHoldNoTranslation) {
    AddRow(QStringLiteral("a.mp3"));
    Rules().options.SaveGetOptions(true, false);
    Rules().options.SaveGetCurPath(QStringLiteral("SAVE"));
    Rules().files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    const std::vector<std::string> stored = Stored();
    EXPECT_EQ(stored.size(), 2U);
    EXPECT_THAT(stored, Each(Not(HasSubstr(markBytes))));
}

TEST_F(TranslatedProgram, AsksAboutAFileThatIsGone) {
    AddRow(QStringLiteral("gone.mp3"));
    Rules().buttons.Start();
    EXPECT_EQ(LookAt(Prompts()), 1);
}

TEST_F(TranslatedProgram, WordsThePauseEntry) {
    QStringList captions;
    QObject::connect(&Rules().transport, &Transport::PauseCaption,
                     [&](const QString& caption) { captions << caption; });
    const QString path = music.Write(QStringLiteral("a.wav"), "x");
    program.components.files.first()->files.insert(path, {QByteArray(100000, '\1'), 1000, 1, {}, 1});
    AddRow(QStringLiteral("a.wav"));
    Rules().buttons.Play();
    Rules().buttons.Pause();
    Rules().buttons.Pause();
    Rules().buttons.Stop();
    EXPECT_EQ(captions, (QStringList{QStringLiteral("«Continue»"), QStringLiteral("«Pause»"),
                                     QStringLiteral("«Pause»")}));
}

TEST_F(TranslatedProgram, StartsWithItsQuestions) {
    class TakenLock : public InstanceLock {
    public:
        bool TryLock() override { return false; }
    } lock;
    EXPECT_FALSE(IsOnlyInstance(lock, Prompts()));
    program.components.players.first()->deviceCount = 0;
    FakeMainWindow window;
    EXPECT_TRUE(Rules().Load(window));
    EXPECT_EQ(LookAt(Prompts()), 2);
    EXPECT_THAT(Stored(), Each(Not(HasSubstr(markBytes))));
}

TEST_F(TranslatedProgram, TellsOfToolsThatAreMissing) {
    program.tools.exists = false;
    Rules().routing.mHelp_Click(3);
    Rules().routing.mHelp_Click(9);
    Rules().buttons.Record();
    EXPECT_EQ(LookAt(Prompts()), 3);
}

TEST_F(TranslatedProgram, ShowsItsHintAndItsFigures) {
    Rules().listTip.MouseMoved();
    ExpectMarked(Rules().listTip.Text());
    const TotalTexts totals = TotalTextsOf(Rules().rows);
    ExpectMarked(totals.LabelSeltal0);
    ExpectMarked(totals.LabelSeltal1);
    ExpectMarked(totals.PictureSelToalTip);
    ExpectMarked(BandFrequency(1));
    ExpectMarked(GainText(1.5F));
}

class TranslatedConverter : protected Marked, public convert::ConverterTest {
protected:
    void ExpectLogMarked(int lines) {
        EXPECT_EQ(Log().size(), static_cast<size_t>(lines));
        EXPECT_THAT(Log(), Each(HasSubstr(markBytes)));
    }
};

TEST_F(TranslatedConverter, TellsOfARun) {
    Open();
    Start();
    EXPECT_EQ(prompts.messages.size(), 1);
    AddJob(QStringLiteral("a.wav"));
    converter.Jobs.TextOutPath_Change(QString());
    Start();
    EXPECT_EQ(prompts.messages.size(), 2);
    converter.Jobs.TextOutPath_Change(out.Path());
    converter.Rows.Append({{QStringLiteral("gone.wav"), {}, music.Path(), true}});
    converter.State.AcmTemplatePath = QStringLiteral("template.wav");
    for (int box = 0; box < outputBoxCount; ++box) {
        Tick(static_cast<OutputBox>(box));
    }
    Start();
    EXPECT_EQ(prompts.messages.size(), 4);
    EXPECT_EQ(LookAt(prompts), 4);
    // Of WMA, which cannot be read back, all but the way back's calls.
    ExpectLogMarked(2 * stageCount + 10);
    ExpectMarked(converter.Run.Label10(0));
    ExpectMarked(converter.Run.Label10(1));
    EXPECT_TRUE(converter.Run.Label10(0).contains(QLatin1String("gone.wav")));
}

TEST_F(TranslatedConverter, AsksOnStopAndCountsWhatIsTicked) {
    Open();
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    Tick(OutputBox::chMP3);
    pending.onRun = [this] {
        pending.onRun = nullptr;
        Stop();
    };
    Start();
    EXPECT_EQ(prompts.questions.size(), 2);
    EXPECT_EQ(LookAt(prompts), 3);
    converter.Run.ListViewInput_ItemCheck();
    ExpectMarked(converter.Run.Label10(1));
}

TEST_F(TranslatedConverter, LogsWhatIsSet) {
    Open();
    converter.Settings.opFreq_Click(0);
    converter.Settings.opChannels_Click(1);
    converter.Settings.opChannels_Click(2);
    converter.Settings.cmbG723Bits_Click(0);
    converter.Settings.cmbG726Bits_Click(0);
    converter.Settings.udWMAProfile_Change(7);
    converter.Settings.EncoderDialogClosed(EncoderDialog::Mp3);
    converter.Settings.EncoderDialogClosed(EncoderDialog::Ogg);
    prompts.filesToChoose = {{QStringLiteral("/a.wav")}};
    converter.Settings.ChooseTemplate();
    ExpectLogMarked(9);
    EXPECT_EQ(LookAt(prompts), 1);
}

TEST_F(TranslatedConverter, ShowsAndAsksForFolders) {
    for (const QString& text : {converter.Jobs.txtInputFile(), converter.Jobs.TextOutPath(),
                                converter.Jobs.LabelIn(), converter.Jobs.LabelOut()}) {
        ExpectMarked(text);
    }
    Open();
    converter.Jobs.ImageinPath_Click();
    converter.Jobs.ImageOutPath_Click();
    EXPECT_EQ(LookAt(prompts), 2);
    ExpectMarked(SizeText(0));
    ExpectMarked(SizeText(4096));
}

TEST_F(TranslatedConverter, StoresThePathThatWasNeverChosenInEnglishAndShowsItTranslated) {
    converter.Jobs.SaveGetConPath(ConPathAction::Save);
    EXPECT_THAT(Content(ConPath()), HasSubstr("Enter Input Directory"));
    EXPECT_THAT(Content(ConPath()), HasSubstr("Enter Output Directory"));
    EXPECT_THAT(Content(ConPath()), Not(HasSubstr(markBytes)));
    converter.Jobs.TextOutPath_Change(QStringLiteral("/o"));
    converter.Load();
    EXPECT_EQ(Utf8(converter.Jobs.TextOutPath()), "«Enter Output Directory»");
    // The first input folder becomes the output folder, too.
    converter.Jobs.txtInputFile_Change(music.Path());
    EXPECT_EQ(Utf8(converter.Jobs.TextOutPath()), Utf8(music.Path()));
}

TEST_F(TranslatedConverter, TellsOfRowsOfThePlaylistThatAreGone) {
    playlist.Append(
        rules::MakeRow(1, QStringLiteral("a"), {}, {}, QStringLiteral("/m/"), QStringLiteral("gone.mp3")));
    converter.Jobs.SaveGetConPath(ConPathAction::Save);
    program.ConvertMode = 4;
    converter.Load();
    EXPECT_EQ(LookAt(prompts), 1);
    ExpectMarked(converter.Jobs.txtInputFile());
    ExpectMarked(converter.Jobs.LabelIn());
}

TEST_F(TranslatedConverter, RefusesAFormat) {
    output.refusedFormats << QStringLiteral("IsAvailableFormatOggVorbis");
    OggDialogRule rule({output, prompts, {}}, 44100, 2);
    EXPECT_FALSE(rule.ApplyOgg());
    EXPECT_EQ(LookAt(prompts), 1);
}

class TranslatedTagEditor : protected Marked, public TagEditorFixture {
protected:
    TagEditor editor{{state, rows, information, prompts}};
};

TEST_F(TranslatedTagEditor, TellsWhatBecameOfAnUpdate) {
    editor.GetInfo(2);
    editor.Update();
    information.saveOutcome = Outcome::WriteFailed;
    editor.Update();
    state.LastIndex = 2;
    editor.Update();
    EXPECT_EQ(prompts.messages.size(), 3);
    editor.ImageinPath();
    // The title and seven filters.
    EXPECT_EQ(LookAt(prompts), 3 + 8);
    const TagFields& stored = information.StoredTag(QStringLiteral("/music/two.mp3"), TagKind::Id3v1);
    EXPECT_FALSE(stored.title.contains(openingMark));
    EXPECT_FALSE(rows.Field(2, RowText).contains(openingMark));
}

TEST_F(TranslatedTagEditor, ShowsFiguresWithTheirUnits) {
    editor.GetInfo(1);
    ExpectMarked(editor.Technical().infoFrequency);
    ExpectMarked(editor.Technical().infoBitrate);
    ExpectMarked(editor.Technical().infoDuration);
    EXPECT_FALSE(editor.Technical().infoFormatString.contains(openingMark));
}

} // namespace
} // namespace kestrune
