#include "program/prompt_dialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QtTest>
#include <functional>
#include <gmock/gmock.h>

namespace kestrune {
namespace {

TEST(TypedNames, OneNameIsTakenWhole) {
    EXPECT_EQ(TypedNames(QStringLiteral("my song.mp3"), QStringLiteral("/music")),
              QStringList{QStringLiteral("/music/my song.mp3")});
}

TEST(TypedNames, SeveralNamesStandInQuotationMarks) {
    EXPECT_EQ(TypedNames(QStringLiteral("\"a b.mp3\" \"noext\"  \"/else/c.ogg\""), QStringLiteral("/music")),
              (QStringList{QStringLiteral("/music/a b.mp3"), QStringLiteral("/music/noext"),
                           QStringLiteral("/else/c.ogg")}));
}

TEST(TypedNames, AnEmptyLineNamesNothing) {
    EXPECT_TRUE(TypedNames(QString(), QStringLiteral("/music")).isEmpty());
    EXPECT_TRUE(TypedNames(QStringLiteral("\"\""), QStringLiteral("/music")).isEmpty());
}

// Real boxes and dialogs, answered while they are open.
class PromptDialogsTest : public testing::Test {
protected:
    // Runs once the next box or dialog is on screen.
    template <typename Dialog>
    void Answer(const std::function<void(Dialog&)>& answer) {
        QTimer::singleShot(0, &context, [this, answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible()) {
                Answer<Dialog>(answer);
                return;
            }
            answer(*dialog);
        });
    }
    // A dialog for audio files in a folder with a.wav and b.mp3.
    FileChoice Choice() {
        for (const char* name : {"a.wav", "b.mp3"}) {
            QFile file(folder.filePath(QString::fromLatin1(name)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        FileChoice choice;
        choice.title = QStringLiteral("Record");
        choice.startFolder = folder.path();
        choice.filter = QStringLiteral("Wav files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|"
                                       "Raw files (*.pcm;*.raw)|*.pcm;*.raw");
        return choice;
    }
    // Sets the filter by the keyboard, types a name and presses Enter.
    void AnswerFile(int filterSteps, const QString& name) {
        Answer<QFileDialog>([filterSteps, name](QFileDialog& dialog) {
            auto* filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            auto* line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(filters, nullptr);
            ASSERT_NE(line, nullptr);
            for (int step = 0; step < filterSteps; ++step) {
                QTest::keyClick(filters, Qt::Key_Down);
            }
            line->setFocus();
            QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(line, name);
            QTest::keyClick(line, Qt::Key_Return);
        });
    }

    QObject context;
    QTemporaryDir folder;
    PromptDialogs prompts;
};

TEST_F(PromptDialogsTest, AMessageHasTheCaptionThatItIsGiven) {
    QStringList captions;
    const auto note = [&captions](QMessageBox& box) {
        captions << box.windowTitle();
        QTest::keyClick(&box, Qt::Key_Return);
    };
    Answer<QMessageBox>(note);
    prompts.Message(QStringLiteral("text"), PromptIcon::Warning, QStringLiteral("Scanning buses error"));
    Answer<QMessageBox>(note);
    prompts.Message(QStringLiteral("text"), PromptIcon::Warning);
    EXPECT_THAT(captions, testing::ElementsAre("Scanning buses error", "Kestrune"));
}

TEST_F(PromptDialogsTest, AQuestionHasTheCaptionThatItIsGiven) {
    QStringList captions;
    const auto answerWith = [&captions](QMessageBox::StandardButton button) {
        return [&captions, button](QMessageBox& box) {
            captions << box.windowTitle();
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        };
    };
    Answer<QMessageBox>(answerWith(QMessageBox::Yes));
    EXPECT_TRUE(prompts.AskYesNo(QStringLiteral("text"), PromptIcon::Question,
                                 QStringLiteral("FreeDB options changed")));
    Answer<QMessageBox>(answerWith(QMessageBox::No));
    EXPECT_FALSE(prompts.AskYesNo(QStringLiteral("text"), PromptIcon::Question));
    EXPECT_THAT(captions, testing::ElementsAre("FreeDB options changed", "Kestrune"));
}

TEST_F(PromptDialogsTest, TheFilterThatWasSetIsTold) {
    for (int steps = 0; steps < 3; ++steps) {
        AnswerFile(steps, QStringLiteral("new.any"));
        const FileAnswer answer = prompts.ChooseFiles(Choice());
        EXPECT_THAT(answer.files, testing::ElementsAre(folder.filePath(QStringLiteral("new.any"))));
        EXPECT_EQ(answer.filterIndex, steps + 1);
    }
}

TEST_F(PromptDialogsTest, TheFilterIsToldForFilesThatExistAndForSaving) {
    FileChoice choice = Choice();
    choice.mustExist = true;
    AnswerFile(1, QStringLiteral("b.mp3"));
    FileAnswer answer = prompts.ChooseFiles(choice);
    EXPECT_THAT(answer.files, testing::ElementsAre(folder.filePath(QStringLiteral("b.mp3"))));
    EXPECT_EQ(answer.filterIndex, 2);
    choice.mustExist = false;
    choice.save = true;
    AnswerFile(2, QStringLiteral("out.raw"));
    answer = prompts.ChooseFiles(choice);
    EXPECT_THAT(answer.files, testing::ElementsAre(folder.filePath(QStringLiteral("out.raw"))));
    EXPECT_EQ(answer.filterIndex, 3);
}

TEST_F(PromptDialogsTest, ACancelTellsNoFileAndNoFilter) {
    Answer<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    const FileAnswer answer = prompts.ChooseFiles(Choice());
    EXPECT_TRUE(answer.files.isEmpty());
    EXPECT_EQ(answer.filterIndex, 0);
}

TEST_F(PromptDialogsTest, WithoutFiltersThereIsNoneToTell) {
    FileChoice choice = Choice();
    choice.filter.clear();
    AnswerFile(0, QStringLiteral("a.wav"));
    const FileAnswer answer = prompts.ChooseFiles(choice);
    EXPECT_THAT(answer.files, testing::ElementsAre(folder.filePath(QStringLiteral("a.wav"))));
    EXPECT_EQ(answer.filterIndex, 0);
}

} // namespace
} // namespace kestrune
