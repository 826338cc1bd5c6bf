// Every text of a window goes through the translation: with a translator that puts marks round all it is
// asked for, a text without marks has gone past it.
#include "convert/converter_window_fixture.h"
#include "editors/frm_cue_list.h"
#include "editors/frm_info.h"
#include "editors/tag_editor_fixture.h"
#include "encoder_options/mp3_dialog.h"
#include "encoder_options/ogg_dialog.h"
#include "help/help_window.h"
#include "main_window/main_window_fixture.h"
#include "program/frm_splash.h"
#include "support/marking_translator.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QListWidget>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeWidget>

namespace kestrune {
namespace {

class WordWalk {
public:
    // `data`: objects whose texts come from files or from what the user typed.
    WordWalk(QWidget& window, const QStringList& data) : window_(window), data_(data) {}

    // Returns how many texts were looked at.
    int Run() {
        Look(window_);
        for (const QWidget* widget : window_.findChildren<QWidget*>()) {
            Look(*widget);
        }
        return count_;
    }

private:
    // A name of a format, a number or an option of a command line is no word of a language.
    static bool IsWord(const QString& text) {
        static const QRegularExpression word(QStringLiteral("[a-z]{2}"));
        static const QStringList names = {QStringLiteral("Kestrune"), QStringLiteral("ID3v1"),
                                          QStringLiteral("ID3v2")};
        return word.match(text).hasMatch() && !names.contains(text) && !text.startsWith(QLatin1String("--"));
    }
    void Check(const QWidget& widget, const QString& text) {
        if (IsWord(text)) {
            ++count_;
            EXPECT_TRUE(text.contains(openingMark))
                << widget.metaObject()->className() << " " << widget.objectName().toStdString() << ": "
                << text.toStdString();
        }
    }
    void Look(const QWidget& widget) {
        const bool isData = data_.contains(widget.objectName());
        if (!isData || widget.accessibleName() != widget.toolTip()) {
            Check(widget, widget.accessibleName());
        }
        Check(widget, widget.accessibleDescription());
        if (isData || widget.objectName().startsWith(QLatin1String("qt_"))) {
            return;
        }
        Check(widget, widget.toolTip());
        if (widget.isWindow()) {
            Check(widget, widget.windowTitle());
        }
        LookAtControls(widget);
        LookAtLists(widget);
    }
    void LookAtControls(const QWidget& widget) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            Check(widget, label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            Check(widget, button->text());
        } else if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) {
            Check(widget, frame->title());
        } else if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) {
            Check(widget, box->placeholderText());
            Check(widget, box->text());
        }
    }
    void LookAtLists(const QWidget& widget) {
        if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
            Check(widget, menu->title());
            for (const QAction* entry : menu->actions()) {
                Check(widget, entry->text());
            }
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                Check(widget, tabs->tabText(tab));
                Check(widget, tabs->tabToolTip(tab));
            }
        } else if (const auto* choice = qobject_cast<const QComboBox*>(&widget)) {
            for (int item = 0; item < choice->count(); ++item) {
                Check(widget, choice->itemText(item));
            }
        } else if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
            for (int section = 0; header->model() != nullptr && section < header->count(); ++section) {
                Check(widget, header->model()->headerData(section, Qt::Horizontal).toString());
            }
        } else if (const auto* list = qobject_cast<const QListWidget*>(&widget)) {
            for (int row = 0; row < list->count(); ++row) {
                Check(widget, list->item(row)->text());
            }
        }
    }

    QWidget& window_;
    QStringList data_;
    int count_ = 0;
};

class MainWindowWords : private Marked, public MainWindowTest {};

TEST_F(MainWindowWords, AreTranslated) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(2));
    DoubleClickRow(1);
    ClickButton(QStringLiteral("ImagePlayButton"), ButtonPause);
    EXPECT_TRUE(window.findChild<QAction*>(QStringLiteral("mnuPause"))->text().contains(openingMark));
    const QStringList data = {"frmMain", "LabelName", "LabelFormat", "LabelTemp"};
    EXPECT_GT(WordWalk(window, data).Run(), 120);
}

TEST_F(MainWindowWords, OfTheTotalsAreTranslatedAtTheStart) {
    Start();
    EXPECT_GT(WordWalk(window, {QStringLiteral("frmMain")}).Run(), 120);
    EXPECT_TRUE(Find<QLabel>(QStringLiteral("LabelSeltal(0)"))->text().contains(openingMark));
}

class ConverterWords : private Marked, public ConverterWindowTest {};

TEST_F(ConverterWords, AreTranslated) {
    Open();
    Click("ImageUpdown");
    const QStringList data = {"Text1",
                              "txtWMAFormatString",
                              "txtMP3FormatString",
                              "txtOGGFormatString",
                              "txtADPCMFormatString",
                              "txtDSPFormatString",
                              "txtMP2FormatString",
                              "txtVOXFormatString",
                              "txtGSMFormatString",
                              "txtG723FormatString",
                              "txtG726FormatString",
                              "txtULAWFormatString"};
    EXPECT_GT(WordWalk(window, data).Run(), 80);
}

TEST_F(ConverterWords, OfTheEncodersOptionsAreTranslated) {
    Mp3Options options;
    Mp3Dialog mp3(options, {output, {}, {}}, nullptr);
    mp3.open();
    EXPECT_GT(WordWalk(mp3, {}).Run(), 80);
    OggDialog ogg({output, prompts, {}}, 44100, 2, nullptr);
    ogg.open();
    EXPECT_GT(WordWalk(ogg, {}).Run(), 15);
}

class EditorWords : private Marked, public TagEditorFixture {};

TEST_F(EditorWords, AreTranslated) {
    FrmInfo editor({state, rows, information, prompts}, nullptr);
    editor.Load();
    editor.open();
    const QStringList data = {"aFile",       "infoTitle",     "infoArtist",    "infoAlbum",
                              "infoGenre",   "infoGenreS",    "infoComment",   "infoComposer",
                              "infoURL",     "infoCopyright", "infoEncodedBy", "infoOriginalArtist",
                              "infoBitrate", "infoDuration",  "infoFrequency", "infoFormatString"};
    EXPECT_GT(WordWalk(editor, data).Run(), 30);
    FrmCueList cues(information, &editor);
    cues.Load();
    cues.open();
    EXPECT_GT(WordWalk(cues, {}).Run(), 12);
}

TEST_F(EditorWords, OfTheHelpAndTheAboutWindowAreTranslated) {
    HelpWindow help;
    help.show();
    // The pages, and what leads to them, are a book of their own.
    const QStringList data = {"HelpContents", "HelpIndex", "HelpHits", "HelpPage"};
    EXPECT_GT(WordWalk(help, data).Run(), 15);
    FrmSplash about(state);
    about.show();
    EXPECT_GT(WordWalk(about, {}).Run(), 3);
}

} // namespace
} // namespace kestrune
