// The panel of the output formats by mouse and keys.
#include "convert/converter_window_fixture.h"

#include <QComboBox>
#include <QRadioButton>
#include <QTimer>

namespace kestrune {
namespace {

class ConverterSettingsTest : public ConverterWindowTest {
protected:
    void Open() {
        ConverterWindowTest::Open();
        Click("ImageOptions");
    }
    QString Format(const char* name) { return Find<QLineEdit>(name)->text(); }
    QString LastEvent() const { return rules.Events.Text(rules.Events.Count()); }
    // Opens an encoder dialog and answers it with one of its keys.
    void OpenAndPress(const char* opener, const QString& expectedDialog, const char* button) {
        bool seen = false;
        QTimer::singleShot(0, &window, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || dialog == &window) {
                return;
            }
            seen = dialog->objectName() == expectedDialog;
            auto* key = dialog->findChild<QAbstractButton*>(QLatin1String(button));
            if (key != nullptr) {
                key->click();
            } else {
                dialog->reject();
            }
        });
        Click(opener);
        EXPECT_TRUE(seen) << expectedDialog.toStdString();
    }
};

TEST_F(ConverterSettingsTest, ThePanelLiesOverTheLeftSide) {
    Open();
    QWidget* panel = Find("PictureSet");
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->pos(), QPoint(2, 25));
    EXPECT_LE(panel->geometry().right(), Find("LabelOut")->geometry().left());
    EXPECT_FALSE(List()->isVisible());
    EXPECT_TRUE(Find<QAbstractButton>("ImageOptions")->isChecked());
    Click("ImageOptions");
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(List()->isVisible());
    EXPECT_FALSE(Find<QAbstractButton>("ImageOptions")->isChecked());
}

// The list that is covered had the keyboard: it does not go to whatever comes next.
TEST_F(ConverterSettingsTest, ThePanelTakesTheKeyboardToItsKey) {
    ConverterWindowTest::Open();
    List()->setFocus();
    Click("ImageOptions");
    EXPECT_TRUE(Find("ImageOptions")->hasFocus());
    Click("LabelOut");
    EXPECT_TRUE(Find("TextOutPath")->hasFocus());
    MoveMouse(&window, {368, 300});
    EXPECT_FALSE(Find("TextOutPath")->isVisible());
    EXPECT_TRUE(Find("ImageOptions")->hasFocus());
}

TEST_F(ConverterSettingsTest, ItsCrossAndEscapeHideIt) {
    Open();
    Click("ImageSetdown");
    EXPECT_FALSE(Find("PictureSet")->isVisible());
    EXPECT_FALSE(Find<QAbstractButton>("ImageOptions")->isChecked());
    Click("ImageOptions");
    Find("txtMP3FormatString")->setFocus();
    QTest::keyClick(Find("txtMP3FormatString"), Qt::Key_Escape);
    EXPECT_FALSE(Find("PictureSet")->isVisible());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(Find("ImageOptions")->hasFocus());
}

TEST_F(ConverterSettingsTest, StartsWithTheDefaults) {
    Open();
    EXPECT_TRUE(Find<QRadioButton>("opFreq(6)")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>("opChannels(2)")->isChecked());
    EXPECT_EQ(Find<QComboBox>("cmbG723Bits")->currentText(), QStringLiteral("5 bit"));
    EXPECT_EQ(Find<QComboBox>("cmbG726Bits")->currentText(), QStringLiteral("4 bit"));
    EXPECT_EQ(Find<QSpinBox>("udWMAProfile")->value(), 39);
    EXPECT_EQ(Find<QLineEdit>("txtWMAProfile")->text(), QStringLiteral("39"));
    EXPECT_EQ(Format("txtMP3FormatString"), QStringLiteral("SetFormatMP3 44100 128 2"));
    EXPECT_EQ(Format("txtULAWFormatString"), QStringLiteral("SetFormatRaw 2 44100 2 16"));
    EXPECT_EQ(Format("Text1"), QString());
    EXPECT_EQ(rules.Events.Count(), 2);
}

TEST_F(ConverterSettingsTest, FrequencyAndChannelsAreChosenByMouseAndKeys) {
    Open();
    Tick("opFreq(0)");
    EXPECT_EQ(rules.State.SampleRate, 8000);
    EXPECT_EQ(LastEvent(), QStringLiteral("Set Frequency: 8000 Hz"));
    EXPECT_EQ(Format("txtGSMFormatString"), QStringLiteral("SetFormatGSM 8000"));
    QTest::keyClick(Find("opFreq(0)"), Qt::Key_Right);
    EXPECT_EQ(rules.State.SampleRate, 11025);
    Tick("opChannels(1)");
    EXPECT_EQ(rules.State.Channels, 1);
    EXPECT_EQ(LastEvent(), QStringLiteral("Set Mono"));
    EXPECT_EQ(Format("txtADPCMFormatString"), QStringLiteral("SetFormatADPCM 11025 1"));
    // The two groups know nothing of each other.
    EXPECT_TRUE(Find<QRadioButton>("opFreq(1)")->isChecked());
}

TEST_F(ConverterSettingsTest, BitsAreChosenInTheirBoxes) {
    Open();
    QTest::keyClick(Find("cmbG723Bits"), Qt::Key_Up);
    EXPECT_EQ(rules.State.G723Bits, 3);
    EXPECT_EQ(LastEvent(), QStringLiteral("Set G.723 Format parameters "));
    EXPECT_EQ(Format("txtG723FormatString"), QStringLiteral("SetFormatG723 44100 3"));
    QTest::keyClick(Find("cmbG726Bits"), Qt::Key_Down);
    EXPECT_EQ(rules.State.G726Bits, 5);
    EXPECT_EQ(LastEvent(), QStringLiteral("Set G.726 Format parameters "));
}

TEST_F(ConverterSettingsTest, TheProfileIsSpunAndTyped) {
    Open();
    auto* spinner = Find<QSpinBox>("udWMAProfile");
    QTest::keyClick(spinner, Qt::Key_Up);
    EXPECT_EQ(rules.State.udWMAProfile, 40);
    EXPECT_EQ(Format("txtWMAFormatString"), QStringLiteral("SetFormatWMA 40"));
    EXPECT_EQ(LastEvent(), QStringLiteral("Set WMA Format parameters "));
    Find<QLineEdit>("txtWMAProfile")->selectAll();
    QTest::keyClicks(spinner, QStringLiteral("12"));
    EXPECT_EQ(rules.State.udWMAProfile, 12);
}

TEST_F(ConverterSettingsTest, ATemplateIsAskedForAndShown) {
    Open();
    prompts.filesToChoose = {{QStringLiteral("/music/pattern.wav")}};
    Click("ImageSet(2)");
    EXPECT_EQ(Format("Text1"), QStringLiteral("SetFormatFromFile /music/pattern.wav"));
    EXPECT_EQ(LastEvent(), QStringLiteral("Set ACM Format parameters "));
    const int events = rules.Events.Count();
    Click("ImageSet(2)");
    EXPECT_EQ(rules.Events.Count(), events);
    EXPECT_EQ(Format("Text1"), QStringLiteral("SetFormatFromFile /music/pattern.wav"));
}

TEST_F(ConverterSettingsTest, TheEncoderDialogsOpenAndSetTheirFormats) {
    Open();
    OpenAndPress("ImageSet(0)", QStringLiteral("ConverterfrmMP3"), "ImageCMD(0)");
    EXPECT_EQ(Format("txtMP3FormatString"), QStringLiteral("SetFormatMP3Options 44100 128 2"));
    EXPECT_EQ(Format("txtMP2FormatString"), QStringLiteral("SetFormatMP2 44100 128 2"));
    EXPECT_EQ(LastEvent(), QStringLiteral("Set MP3 Format parameters "));
    OpenAndPress("ImageSet(1)", QStringLiteral("ConverterfrmOgg"), "ImageCMD(1)");
    EXPECT_EQ(Format("txtOGGFormatString"), QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 -1"));
    EXPECT_EQ(LastEvent(), QStringLiteral("Set Ogg Vorbis Format parameters "));
}

TEST_F(ConverterSettingsTest, TheLongestFormatThatIsWrittenFitsItsLine) {
    Open();
    auto* line = Find<QLineEdit>("txtWMAFormatString");
    constexpr int marginsOfALineEdit = 4;
    EXPECT_LE(line->fontMetrics().horizontalAdvance(
                  QStringLiteral("Windows Media Audio, 44,100 Hz, 128 kbps, Stereo")),
              line->width() - marginsOfALineEdit);
}

TEST_F(ConverterSettingsTest, ATextTooLongForItsLineBeginsAtItsBeginning) {
    Open();
    auto* line = Find<QLineEdit>("txtDSPFormatString");
    rules.Settings.SetFormatText(FormatBox::txtDSPFormatString, QString(200, u'x'));
    EXPECT_EQ(line->cursorPosition(), 0);
    EXPECT_TRUE(line->isReadOnly());
}

} // namespace
} // namespace kestrune
