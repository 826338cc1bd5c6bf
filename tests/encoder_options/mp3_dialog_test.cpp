// What the MP3 options dialog does by mouse and keys.
#include "encoder_options/mp3_dialog.h"

#include "dialog_fixture.h"
#include "encoder_options/mp3_presets.h"
#include "support/fake_audio_format.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>

namespace kestrune {
namespace {

class Mp3DialogTest : public DialogTest {
protected:
    void Front(Mp3Tab tab) { Find<QTabWidget>("tabMP3")->setCurrentIndex(static_cast<int>(tab)); }
    void Type(const char* name, const char* text) {
        auto* edit = Find<QLineEdit>(name);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
    }

    FakeAudioFormat file;
    Mp3Options options;
    QString mp3Text;
    QString mp2Text;
    Mp3Dialog converter{options,
                        {file, [this](const QString& text) { mp3Text = text; },
                         [this](const QString& text) { mp2Text = text; }},
                        nullptr};
};

TEST_F(Mp3DialogTest, OkAppliesAndCloses) {
    Show(converter);
    Find<QSlider>("sldrBitrate")->setValue(10);
    Click(Ok);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_EQ(converter.result(), QDialog::Accepted);
    EXPECT_EQ(options.bitrate, 160);
    EXPECT_EQ(mp3Text, QStringLiteral("SetFormatMP3Options 44100 160 2"));
    EXPECT_EQ(mp2Text, QStringLiteral("SetFormatMP2 44100 160 2"));
}

TEST_F(Mp3DialogTest, ApplyStaysOpen) {
    Show(converter);
    Find<QSlider>("sldrBitrate")->setValue(10);
    Click(Apply);
    EXPECT_TRUE(converter.isVisible());
    EXPECT_EQ(options.bitrate, 160);
    EXPECT_EQ(file.calls.size(), 2);
}

TEST_F(Mp3DialogTest, CancelClosesWithoutApplying) {
    Show(converter);
    Find<QSlider>("sldrBitrate")->setValue(10);
    Click(Cancel);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_EQ(converter.result(), QDialog::Rejected);
    EXPECT_EQ(options.bitrate, 128);
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(Mp3DialogTest, EnterIsOkFromEveryTab) {
    for (int tab = 0; tab < 7; ++tab) {
        Show(converter);
        Front(static_cast<Mp3Tab>(tab));
        file.calls.clear();
        QTest::keyClick(Find<QTabWidget>("tabMP3")->tabBar(), tab % 2 == 0 ? Qt::Key_Return : Qt::Key_Enter);
        EXPECT_FALSE(converter.isVisible()) << tab;
        EXPECT_EQ(file.calls.size(), 2) << tab;
    }
}

TEST_F(Mp3DialogTest, EnterOnAKeyIsThatKey) {
    Show(converter);
    auto* cancel = Find<ImageButton>("ImageCMD(1)");
    cancel->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cancel, Qt::Key_Return);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(Mp3DialogTest, EscapeAndTheCrossAreCancel) {
    Show(converter);
    QTest::keyClick(Find<QSlider>("sldrBitrate"), Qt::Key_Escape);
    EXPECT_FALSE(converter.isVisible());
    Show(converter);
    QTest::mouseClick(Find<QAbstractButton>("ImageQuit"), Qt::LeftButton);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(Mp3DialogTest, TheQualityOutlivesCancel) {
    Show(converter);
    auto* quality = Find<QSlider>("sldrQuality");
    EXPECT_EQ(quality->value(), 5);
    // Better is at the right.
    QTest::keyClick(quality, Qt::Key_Right);
    EXPECT_EQ(options.quality, 4);
    QTest::keyClick(quality, Qt::Key_Up);
    EXPECT_EQ(options.quality, 3);
    QTest::keyClick(quality, Qt::Key_Home);
    EXPECT_EQ(options.quality, 9);
    QTest::keyClick(quality, Qt::Key_End);
    Click(Cancel);
    EXPECT_EQ(options.quality, 0);
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(Mp3DialogTest, BetterQualityIsAtTheRightUnderTheMouse) {
    Show(converter);
    auto* quality = Find<QSlider>("sldrQuality");
    for (int click = 0; click < 9; ++click) {
        QTest::mouseClick(quality, Qt::LeftButton, {}, {quality->width() - 4, 8});
    }
    EXPECT_EQ(options.quality, 0);
}

TEST_F(Mp3DialogTest, ABitRateIsNamedOverItsSlider) {
    Show(converter);
    EXPECT_EQ(Find<QGroupBox>("frmBitrate")->title(), QStringLiteral("Current bitrate: 128 kbit"));
    EXPECT_EQ(Text("lblVbrBitrate"), "Current bitrate: 320 kbit");
    QTest::keyClick(Find<QSlider>("sldrBitrate"), Qt::Key_Right);
    EXPECT_EQ(Find<QGroupBox>("frmBitrate")->title(), QStringLiteral("Current bitrate: 160 kbit"));
    Find<QSlider>("sldrVbrBitrate")->setValue(0);
    EXPECT_EQ(Text("lblVbrBitrate"), "Current bitrate: 8 kbit");
}

TEST_F(Mp3DialogTest, AFilterIsSwitchedByItsTick) {
    Show(converter);
    Front(Mp3Tab::Filtering);
    const std::pair<const char*, QList<const char*>> filters[] = {
        {"chHFilt", {"tHFiltF", "tHFiltW", "udHFiltF", "udHFiltW", "lblHFiltW"}},
        {"chLFilt", {"tLFiltF", "tLFiltW", "udLFiltF", "udLFiltW", "lblLFiltW"}}};
    for (const auto& [tick, controls] : filters) {
        for (const bool expected : {false, true, false}) {
            for (const char* control : controls) {
                EXPECT_EQ(IsEnabled(control), expected) << control;
            }
            ClickMark(QString::fromLatin1(tick));
        }
        EXPECT_TRUE(Find<QAbstractButton>(tick)->isChecked());
    }
    Find<QSpinBox>("udLFiltF")->setValue(16000);
    Click(Apply);
    EXPECT_EQ(options.highpassFrequency, 0);
    EXPECT_EQ(options.lowpassFrequency, 16000);
}

TEST_F(Mp3DialogTest, TheFilterSpinnersStepByTenWithinTheirBounds) {
    options.highpassFrequency = 100;
    Mp3Dialog other(options, {file}, nullptr);
    Show(other);
    Front(Mp3Tab::Filtering);
    auto* spinner = Find<QSpinBox>("udHFiltF");
    EXPECT_EQ(spinner->value(), 100);
    QTest::keyClick(spinner, Qt::Key_Up);
    EXPECT_EQ(spinner->value(), 110);
    Type("tHFiltF", "99999");
    QTest::keyClick(Find<QLineEdit>("tHFiltF"), Qt::Key_Tab);
    EXPECT_EQ(spinner->value(), 48000);
    Type("tHFiltW", "-70001");
    Click(Apply);
    EXPECT_EQ(options.highpassFrequency, 48000);
    EXPECT_EQ(options.highpassWidth, 48000);
}

TEST_F(Mp3DialogTest, TheCodingMethodSwitchesTheVbrTab) {
    Show(converter);
    Front(Mp3Tab::Vbr);
    const QList<const char*> quality = {"lblVbrQuality", "txtVbrQuality", "udVbrQuality"};
    const QList<const char*> target = {"lblAbrBitrate", "txtAbrBitrate", "udAbrBitrate"};
    const QList<const char*> rest = {"frmVbrBitrate",  "frmVbrAdvanced",   "lblVbrBitrate",
                                     "sldrVbrBitrate", "chWriteVBRHeader", "chStrictlyEnforceMinBitrate"};
    auto* method = Find<QComboBox>("cmbVBRCodingMethod");
    for (const int index : {0, 1, 2, 3, 4, 5, 0}) {
        method->setCurrentIndex(index);
        for (const char* name : quality) {
            EXPECT_EQ(IsEnabled(name), index != 0 && index != 5) << name << index;
        }
        for (const char* name : target) {
            EXPECT_EQ(IsEnabled(name), index == 5) << name << index;
        }
        for (const char* name : rest) {
            EXPECT_EQ(IsEnabled(name), index != 0) << name << index;
        }
    }
}

TEST_F(Mp3DialogTest, ATypedAverageBitRateIsBounded) {
    options.vbrMethod = 4;
    Mp3Dialog other(options, {file}, nullptr);
    Show(other);
    Front(Mp3Tab::Vbr);
    const std::pair<const char*, int> cases[] = {
        {"321", 320}, {"9999", 320}, {"3", 4}, {"0", 4}, {"137", 137}};
    for (const auto& [typed, expected] : cases) {
        Type("txtAbrBitrate", typed);
        Click(Apply); // leaves the focus in the field
        EXPECT_EQ(options.abrBitrate, expected) << typed;
        EXPECT_EQ(Find<QLineEdit>("txtAbrBitrate")->text().toInt(), expected) << typed;
    }
    Type("txtAbrBitrate", "500");
    QTest::keyClick(Find<QLineEdit>("txtAbrBitrate"), Qt::Key_Return);
    EXPECT_FALSE(other.isVisible());
    EXPECT_EQ(options.abrBitrate, 320);
}

TEST_F(Mp3DialogTest, LettersAreNotTaken) {
    options.vbrMethod = 4;
    Mp3Dialog other(options, {file}, nullptr);
    Show(other);
    Front(Mp3Tab::Vbr);
    Type("txtAbrBitrate", "1a6b0");
    EXPECT_EQ(Find<QSpinBox>("udAbrBitrate")->value(), 160);
}

TEST_F(Mp3DialogTest, WithThePresetsInFrontOkAppliesThePresetAlone) {
    Show(converter);
    Find<QComboBox>("cmbFrequency")->setCurrentIndex(8);
    Find<QAbstractButton>("chErrorProtection")->setChecked(true);
    Front(Mp3Tab::Preset);
    ClickMark(QStringLiteral("opPreset(9)"));
    EXPECT_EQ(options.preset, 0);
    Click(Ok);
    Mp3Options expected;
    ApplyPreset(expected, 9);
    EXPECT_EQ(options.preset, 9);
    EXPECT_EQ(options.abrBitrate, expected.abrBitrate);
    EXPECT_EQ(options.frequency, 44100);
    EXPECT_FALSE(options.crcProtection);
}

TEST_F(Mp3DialogTest, AnAppliedPresetIsSeenOnTheOtherTabs) {
    Show(converter);
    Front(Mp3Tab::AltPreset);
    ClickMark(QStringLiteral("opAltPreset(5)"));
    Click(Apply);
    EXPECT_EQ(options.altPreset, 5);
    EXPECT_EQ(Find<QGroupBox>("frmBitrate")->title(), QStringLiteral("Current bitrate: 320 kbit"));
    EXPECT_EQ(Find<QComboBox>("cmbChMode")->currentText(), QStringLiteral("Joint Stereo"));
}

TEST_F(Mp3DialogTest, PresetsAreChosenByTheArrowKeysToo) {
    Show(converter);
    Front(Mp3Tab::Preset);
    auto* first = Find<QRadioButton>("opPreset(1)");
    EXPECT_TRUE(first->isChecked());
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Down);
    EXPECT_TRUE(Find<QRadioButton>("opPreset(2)")->isChecked());
    Click(Apply);
    EXPECT_EQ(options.preset, 2);
}

TEST_F(Mp3DialogTest, TheCommandLineIsHandedOnAsTyped) {
    Show(converter);
    Front(Mp3Tab::CommandLine);
    Type("txtCommLine", "-b 192 --unknown");
    Click(Apply);
    EXPECT_EQ(options.commandLine, QStringLiteral("-b 192 --unknown"));
    EXPECT_EQ(Find<QLineEdit>("txtCommLine")->text(), options.commandLine);
    EXPECT_EQ(Find<QGroupBox>("frmBitrate")->title(), QStringLiteral("Current bitrate: 192 kbit"));
}

TEST_F(Mp3DialogTest, TheCommandLineOfTheOptionsIsNotShown) {
    options.commandLine = QStringLiteral("-V 2");
    Mp3Dialog other(options, {file}, nullptr);
    Show(other);
    EXPECT_TRUE(Find<QLineEdit>("txtCommLine")->text().isEmpty());
}

TEST_F(Mp3DialogTest, TheConvertersOptionsAreSeenAgainInTheNextDialog) {
    Show(converter);
    Find<QComboBox>("cmbChMode")->setCurrentIndex(0);
    Click(Ok);
    Mp3Dialog next(options, {file}, nullptr);
    Show(next);
    EXPECT_EQ(Find<QComboBox>("cmbChMode")->currentIndex(), 0);
    EXPECT_EQ(options.channels, 1);
    EXPECT_EQ(mp2Text, QStringLiteral("SetFormatMP2 44100 128 1"));
}

TEST_F(Mp3DialogTest, TheRippersOptionsStartAnew) {
    for (int opening = 0; opening < 2; ++opening) {
        Mp3Dialog ripper(file, nullptr);
        Show(ripper);
        EXPECT_EQ(ripper.objectName(), QStringLiteral("RipfrmMP3"));
        EXPECT_EQ(Find<QSlider>("sldrBitrate")->value(), 9);
        Find<QSlider>("sldrBitrate")->setValue(14);
        file.calls.clear();
        Click(Ok);
        EXPECT_EQ(file.calls, QStringList(QStringLiteral("SetFormatMP3Options 44100 320 2")));
    }
}

TEST_F(Mp3DialogTest, TheTitleDragsTheDialog) {
    Show(converter);
    auto* title = Find<QLabel>("LabelTitle");
    EXPECT_EQ(title->text(), QStringLiteral("MP3 Lame 3.91 Encoder Option"));
    const QPoint start = converter.pos();
    const auto mouse = [&](QEvent::Type type, const QPoint& screen, Qt::MouseButton button,
                           Qt::MouseButtons held) {
        QMouseEvent event(type, title->mapFromGlobal(QPointF(screen)), QPointF(screen), button, held, {});
        QCoreApplication::sendEvent(title, &event);
    };
    const QPoint hold = title->mapToGlobal(QPoint(40, 10));
    mouse(QEvent::MouseButtonPress, hold, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseMove, hold + QPoint(12, -7), Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, hold + QPoint(12, -7), Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(converter.pos(), start + QPoint(12, -7));
}

TEST_F(Mp3DialogTest, TabComesToEveryControlOfThePageInItsOrder) {
    Show(converter);
    const QStringList ends = {QStringLiteral("ImageCMD(0)"), QStringLiteral("ImageCMD(1)"),
                              QStringLiteral("ImageCMD(2)"), QStringLiteral("ImageQuit")};
    const auto expect = [&](Mp3Tab tab, const QStringList& page) {
        Front(tab);
        Find<QTabWidget>("tabMP3")->tabBar()->setFocus();
        EXPECT_EQ(TabRound(), QStringList(QStringLiteral("qt_tabwidget_tabbar")) + page + ends)
            << static_cast<int>(tab);
    };
    expect(Mp3Tab::General, {QStringLiteral("sldrBitrate"), QStringLiteral("cmbChMode"),
                             QStringLiteral("sldrQuality"), QStringLiteral("cmbFrequency")});
    ClickMark(QStringLiteral("chHFilt"));
    Find<QAbstractButton>("chHFilt")->setChecked(true);
    expect(Mp3Tab::Filtering, {QStringLiteral("chHFilt"), QStringLiteral("udHFiltF"),
                               QStringLiteral("udHFiltW"), QStringLiteral("chLFilt")});
    Find<QComboBox>("cmbVBRCodingMethod")->setCurrentIndex(5);
    expect(Mp3Tab::Vbr, {QStringLiteral("cmbVBRCodingMethod"), QStringLiteral("udAbrBitrate"),
                         QStringLiteral("chWriteVBRHeader"), QStringLiteral("chStrictlyEnforceMinBitrate"),
                         QStringLiteral("sldrVbrBitrate")});
    expect(Mp3Tab::Expert, {QStringLiteral("cmbATHControl"), QStringLiteral("cmbEmphasis"),
                            QStringLiteral("chErrorProtection"), QStringLiteral("chBlockType"),
                            QStringLiteral("chBitReservoir"), QStringLiteral("chShortBlocks"),
                            QStringLiteral("chStrictlyISOCompliance")});
    expect(Mp3Tab::CommandLine, {QStringLiteral("txtCommLine")});
}

} // namespace
} // namespace kestrune
