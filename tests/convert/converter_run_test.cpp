// A run of the converter as the window shows it, and what the user does in the middle of one.
#include "convert/converter_window_fixture.h"

namespace kestrune {
namespace {

class ConverterRunTest : public ConverterWindowTest {
protected:
    // Ticked files, and MP3 and OGG to be written.
    void Open(int files) {
        for (int i = 0; i < files; ++i) {
            MakeFile(QString(QChar(u'a' + i)) + QStringLiteral(".wav"));
        }
        ConverterWindowTest::Open();
        Find<QLineEdit>("txtInputFile")->setText(music.path());
        Find<QLineEdit>("TextOutPath")->setText(results.path());
        Click("ImageAllClear(0)");
        Tick("chMP3");
        Tick("chOGG");
    }
    // Done in the middle of the copy loop, once, at its n-th block.
    void AtBlock(int number, std::function<void()> action) {
        pending.onRun = [this, number, action = std::move(action)] {
            if (pending.runs == number) {
                action();
            }
        };
    }
    QStringList Written() const {
        QStringList names;
        for (const QString& path : output.written.keys()) {
            names.append(path.section(u'/', -1));
        }
        names.sort();
        return names;
    }
    QStringList Messages() const {
        QStringList texts;
        for (const auto& message : prompts.messages) {
            texts.append(message.text);
        }
        return texts;
    }
    void ExpectIdle() {
        EXPECT_TRUE(Find("Image1")->isVisible());
        EXPECT_FALSE(Find("Image2")->isVisible());
        EXPECT_FALSE(Find("stopPlate")->isVisible());
        EXPECT_FALSE(Find("Label11")->isVisible());
        for (const char* name : {"ImageQuit", "txtInputFile", "ImageinPath", "TextOutPath", "ImageOutPath"}) {
            EXPECT_TRUE(Find(name)->isEnabled()) << name;
        }
    }
};

TEST_F(ConverterRunTest, WithoutATickedFileThereIsAMessage) {
    Open(1);
    Click("ImageAllClear(1)");
    Click("Image1");
    EXPECT_EQ(Messages(), QStringList{QStringLiteral("No file selected!")});
    ExpectIdle();
}

TEST_F(ConverterRunTest, ShowsHowFarItIs) {
    Open(2);
    int looked = 0;
    AtBlock(4, [&] {
        ++looked;
        EXPECT_FALSE(Find("Image1")->isVisible());
        EXPECT_TRUE(Find("Image2")->isVisible());
        EXPECT_TRUE(Find("stopPlate")->isVisible());
        for (const char* name : {"ImageQuit", "txtInputFile", "ImageinPath", "TextOutPath", "ImageOutPath"}) {
            EXPECT_FALSE(Find(name)->isEnabled()) << name;
        }
        EXPECT_EQ(Find<QLabel>("Label10(0)")->text(), QStringLiteral("Current File: a.wav"));
        EXPECT_EQ(Find<QLabel>("Label10(1)")->text(),
                  QStringLiteral("0 File Created/0 File Converted(Total 2)"));
        EXPECT_TRUE(Find("Label11")->isVisible());
        EXPECT_EQ(Find<QLabel>("Label11")->text(), QStringLiteral("--> MP3"));
        // Four blocks of 1,000 bytes of 8,000.
        EXPECT_EQ(Find<QProgressBar>("ProgressConvert")->value(), progressConvertMaximum / 2);
        EXPECT_EQ(Find<QProgressBar>("ProgressBar1")->maximum(), 2);
        EXPECT_EQ(window.cursor().shape(), Qt::BusyCursor);
    });
    Click("Image1");
    EXPECT_EQ(looked, 1);
    EXPECT_EQ(Written(), (QStringList{"a.mp3", "a.ogg", "b.mp3", "b.ogg"}));
    EXPECT_EQ(Messages(), QStringList{QStringLiteral("Done!")});
    EXPECT_EQ(Find<QLabel>("Label10(1)")->text(),
              QStringLiteral("4 Files Created/2 Files Converted(Total 2)"));
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1")->value(), 2);
    EXPECT_EQ(Find<QProgressBar>("ProgressConvert")->value(), 1);
    EXPECT_NE(window.cursor().shape(), Qt::BusyCursor);
    ExpectIdle();
}

TEST_F(ConverterRunTest, TheEventsGrowAndTheLastOneIsInView) {
    clock.msSinceMidnight = ((13 * 60 + 2) * 60 + 3) * 1000;
    Open(4);
    Click("ImageUpdown");
    const auto* view = Find<QTreeView>("viewEvent");
    Click("Image1");
    const QAbstractItemModel* log = view->model();
    // Two of the load, then start, stop and the way back of each of eight outputs.
    ASSERT_EQ(log->rowCount(), 2 + 4 * 2 * 3);
    EXPECT_EQ(log->index(2, EventOperation).data().toString(), QStringLiteral("Start ConvertToMP3"));
    EXPECT_EQ(log->index(2, EventTime).data().toString(), QStringLiteral("13:02:03"));
    EXPECT_EQ(log->headerData(EventTime, Qt::Horizontal).toString(), QStringLiteral("Time"));
    EXPECT_EQ(log->headerData(EventOperation, Qt::Horizontal).toString(), QStringLiteral("Operation"));
    const QRect last = view->visualRect(log->index(log->rowCount() - 1, EventOperation));
    EXPECT_TRUE(view->viewport()->rect().contains(last.center()));
    EXPECT_FALSE(view->viewport()->rect().contains(view->visualRect(log->index(0, EventOperation)).center()));
}

TEST_F(ConverterRunTest, StopEndsTheFileAndTheNextOneFollows) {
    Open(2);
    prompts.answers = {true, true};
    AtBlock(3, [&] {
        Click("Image2");
        ExpectIdle();
    });
    Click("Image1");
    ASSERT_EQ(prompts.questions.size(), 2);
    EXPECT_EQ(prompts.questions[0].text, QStringLiteral("Do you want to skip current file?"));
    EXPECT_EQ(prompts.questions[1].text, QStringLiteral("Do you want to convert the next file?"));
    EXPECT_EQ(output.written.value(results.filePath(QStringLiteral("a.mp3"))).size(), 3000);
    EXPECT_EQ(Written(), (QStringList{"a.mp3", "b.mp3", "b.ogg"}));
}

TEST_F(ConverterRunTest, StopRefusingTheNextFileEndsTheRun) {
    Open(3);
    prompts.answers = {true, false};
    AtBlock(3, [&] { Click("Image2"); });
    Click("Image1");
    EXPECT_EQ(Written(), QStringList{QStringLiteral("a.mp3")});
    EXPECT_EQ(Messages(), QStringList{QStringLiteral("Done!")});
    ExpectIdle();
}

TEST_F(ConverterRunTest, TheKeyboardStaysOnTheKeyThatStartsAndStops) {
    Open(1);
    bool stopHadFocus = false;
    AtBlock(2, [&] { stopHadFocus = Find("Image2")->hasFocus(); });
    Find("Image1")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(Find("Image1"), Qt::Key_Space);
    EXPECT_TRUE(stopHadFocus);
    EXPECT_TRUE(Find("Image1")->hasFocus());
}

TEST_F(ConverterRunTest, TheWindowStaysOpenWhileTheRunGoesOn) {
    Open(1);
    AtBlock(2, [&] {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
        EXPECT_FALSE(window.close());
        EXPECT_TRUE(window.isVisible());
        Click("ImageQuit");
        EXPECT_TRUE(window.isVisible());
    });
    Click("Image1");
    EXPECT_EQ(Written(), (QStringList{"a.mp3", "a.ogg"}));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ConverterRunTest, ClosedAfterAStopItEndsTheRunFirst) {
    Open(3);
    prompts.answers = {true, true};
    bool openAtTheEnd = false;
    pending.onRun = [&] {
        if (pending.runs == 2) {
            Click("Image2");
        } else if (pending.runs == 4) {
            // The second file is being written, and ImageQuit can be used.
            Click("ImageQuit");
            openAtTheEnd = window.isVisible();
        }
    };
    Click("Image1");
    EXPECT_TRUE(openAtTheEnd);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Written(), (QStringList{"a.mp3", "b.mp3"}));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(ConverterRunTest, RowsAndSettingsStayLive) {
    Open(2);
    AtBlock(2, [&] {
        TickRow(2);
        Tick("chOGG");
        EXPECT_FALSE(rules.Rows.IsChecked(2));
        Click("ImageUpdown");
        Click("ImageOptions");
        Tick("opFreq(0)");
    });
    Click("Image1");
    EXPECT_EQ(Written(), QStringList{QStringLiteral("a.mp3")});
    EXPECT_EQ(window.height(), 653);
    EXPECT_EQ(rules.State.SampleRate, 8000);
}

} // namespace
} // namespace kestrune
