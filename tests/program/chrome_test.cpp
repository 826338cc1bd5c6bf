// What the chrome gives every window: its place in the middle of the screen, and the hand over what can be
// clicked.
#include "convert/converter_window_fixture.h"
#include "editors/frm_cue_list.h"
#include "editors/frm_info.h"
#include "editors/tag_editor_fixture.h"
#include "encoder_options/mp3_dialog.h"
#include "encoder_options/ogg_dialog.h"
#include "main_window/main_window_fixture.h"

#include <QAbstractSlider>
#include <QScreen>

namespace kestrune {
namespace {

bool IsHand(const QWidget& part) {
    return part.cursor().shape() == Qt::BitmapCursor && part.cursor().hotSpot() == QPoint(8, 2);
}

// Returns how many buttons there are.
int ExpectHandOverButtons(const QWidget& window) {
    const auto buttons = window.findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons) {
        EXPECT_TRUE(IsHand(*button)) << button->objectName().toStdString();
    }
    return static_cast<int>(buttons.size());
}

void ExpectCentredOn(const QWidget& window, const QRect& ground) {
    // A pixel that can't be halved may fall to either side.
    const QPoint off = window.frameGeometry().center() - ground.center();
    EXPECT_LE(off.manhattanLength(), 2)
        << off.x() << " " << off.y() << " " << window.objectName().toStdString();
}

class MainWindowChrome : public MainWindowTest {};

TEST_F(MainWindowChrome, TheHandIsOverEveryClickablePart) {
    Start();
    EXPECT_GT(ExpectHandOverButtons(window), 40);
    for (const char* name :
         {"LabelTitle", "ImageVolumeButtonB", "ImageVolumeButtonA", "ImageVol(0)", "ImageVol(3)",
          "PositionBar", "PictureStep", "PlaylistScrollBar", "PictureListBut", "PictureScroll",
          "ImageListUpDn(0)", "ImageListUpDn(1)", "Band(0)", "Band(11)"}) {
        EXPECT_TRUE(IsHand(*Find(QLatin1String(name)))) << name;
    }
    ExpectCentredOn(window, window.screen()->geometry());
}

// In the face that the style gives it.
TEST_F(MainWindowChrome, AnUsualFormatIsToldWhole) {
    Start();
    auto* words = Find<QLabel>(QStringLiteral("LabelFormat"));
    for (const char* format : {"MPEG Layer-3, 44,100 Hz, 128 kbps, Stereo",
                               "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo", "PCM, 44,100 Hz, Mono"}) {
        emit transport.KhzShown(true, QLatin1String(format));
        EXPECT_EQ(words->text(), QLatin1String(format));
        EXPECT_LE(words->fontMetrics().horizontalAdvance(words->text()), words->width());
    }
}

class ConverterChrome : public ConverterWindowTest {};

TEST_F(ConverterChrome, TheHandIsOverEveryClickablePart) {
    Open();
    EXPECT_GT(ExpectHandOverButtons(window), 40);
    for (const char* name : {"LabelTitle", "LabelIn", "LabelOut"}) {
        EXPECT_TRUE(IsHand(*Find(name))) << name;
    }
    ExpectCentredOn(window, window.screen()->geometry());
}

TEST_F(ConverterChrome, TheEncodersDialogsStandInTheMiddleOfIt) {
    Open();
    window.move(200, 120);
    Mp3Options options;
    Mp3Dialog mp3(options, {output, {}, {}}, &window);
    OggDialog ogg({output, prompts, {}}, 44100, 2, &window);
    for (QDialog* dialog : std::initializer_list<QDialog*>{&mp3, &ogg}) {
        dialog->open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        ExpectCentredOn(*dialog, window.frameGeometry());
        EXPECT_GT(ExpectHandOverButtons(*dialog), 4);
        dialog->close();
    }
}

class EditorChrome : public TagEditorFixture {};

TEST_F(EditorChrome, TheEditorsStandInTheMiddleOfTheScreen) {
    FrmInfo editor({state, rows, information, prompts}, nullptr);
    editor.Load();
    editor.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    ExpectCentredOn(editor, editor.screen()->geometry());
    EXPECT_EQ(ExpectHandOverButtons(editor), 9);
    editor.move(0, 0);
    FrmCueList cues(information, &editor);
    cues.Load();
    cues.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&cues));
    ExpectCentredOn(cues, cues.screen()->geometry());
    EXPECT_EQ(ExpectHandOverButtons(cues), 4);
}

} // namespace
} // namespace kestrune
