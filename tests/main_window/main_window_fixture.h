// The main window as the program puts it together, over fakes.
#pragma once

#include "program/main_window_parts.h"
#include "program/program.h"
#include "support/fake_components.h"
#include "support/fake_tool_windows.h"

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() { state.AppPath = home.path(); }

    // Loads and shows the window. To be called after the files that the start is to find were written.
    void Start() {
        ASSERT_TRUE(program.Load(window));
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    // A file of 10 seconds, mono at 1000 Hz, on disk and known to the fakes.
    QString MakeFile(const QString& name) {
        const QString path = music.filePath(name);
        QFile onDisk(path);
        EXPECT_TRUE(onDisk.open(QIODevice::WriteOnly));
        FakeAudioFile::Content content;
        content.rateHz = 1000;
        content.channels = 1;
        content.pcm = QByteArray(20000, '\1');
        content.formatText = QStringLiteral("PCM, 44,100 Hz, 128 KBPS, Mono");
        audioFile.files.insert(path, content);
        FakeAudioInformation::Probe probe;
        probe.durationMs = 10000;
        probe.bitrateBps = 128000;
        probe.title = name.section(u'.', 0, 0);
        probe.formatString = content.formatText;
        audioInfo.files.insert(path, probe);
        return path;
    }
    // a.wav, b.wav, ... in rows 1, 2, ...
    void AddTracks(int count) {
        for (int i = 0; i < count; ++i) {
            const QString name = QString(QChar(u'a' + i)) + QStringLiteral(".wav");
            MakeFile(name);
            admission.AddFiletoList(music.path() + u'/', name);
        }
        ASSERT_EQ(rows.Count(), count);
    }

    template <typename Control = QWidget>
    Control* Find(const QString& name) {
        auto* control = window.findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name.toStdString();
        return control;
    }
    QAbstractButton* Button(const QString& array, int index) {
        return Find<QAbstractButton>(QStringLiteral("%1(%2)").arg(array).arg(index));
    }
    PlaylistView* List() { return Find<PlaylistView>(QStringLiteral("ListViewPlaylist")); }
    QPoint RowPoint(int row) {
        return {40, (row - List()->FirstVisible()) * PlaylistView::rowHeight + PlaylistView::rowHeight / 2};
    }
    void ClickButton(const QString& array, int index) {
        QTest::mouseClick(Button(array, index), Qt::LeftButton);
    }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, modifiers, RowPoint(row));
    }
    void DoubleClickRow(int row) {
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, RowPoint(row));
    }
    void Trigger(const QString& entry) {
        auto* action = window.findChild<QAction*>(entry);
        ASSERT_NE(action, nullptr) << entry.toStdString();
        ASSERT_TRUE(action->isEnabled());
        action->trigger();
    }
    bool IsChecked(const QString& entry) {
        const auto* action = window.findChild<QAction*>(entry);
        return action != nullptr && action->isChecked();
    }
    // Which of the state lamps is lit; -1 unless it is exactly one.
    int LitLamp() {
        int lit = -1;
        for (int i = 0; i < 3; ++i) {
            if (Find(QStringLiteral("ImageSmall(%1)").arg(i))->isVisible()) {
                lit = lit == -1 ? i : -2;
            }
        }
        return lit;
    }
    QList<int> Selected() const {
        QList<int> selected;
        for (int row = 1; row <= rows.Count(); ++row) {
            if (rows.IsSelected(row)) {
                selected.append(row);
            }
        }
        return selected;
    }
    QString Playing() const {
        return transport.State().IsPlaying ? transport.State().PlayFile.section(u'/', -1) : QString();
    }
    QString DefaultList() const { return home.filePath(QStringLiteral("Default.ksl")); }

    QTemporaryDir home;
    QTemporaryDir music;
    ProgramState state;
    FakeToolWindows tools;
    FakeComponents components;
    Program program{components, state, tools};
    MainPictures skinPictures;
    FrmMain window{MainWindowParts(program, skinPictures)};

    // The parts of the program that tests look at.
    FakeAudioFile& audioFile = *components.files.first();
    FakeAudioPlayer& player = *components.players.first();
    FakeAudioInformation& audioInfo = *components.information.first();
    FakeUserPrompts& prompts = components.prompts;
    FakeClock& clock = components.clock;
    Options& options = program.options;
    PlaylistRows& rows = program.rows;
    Admission& admission = program.admission;
    PlaylistFiles& files = program.files;
    Transport& transport = program.transport;
    PlaylistEditing& editing = program.editing;
    AudioDisplay& audioDisplay = program.display;
    MenuRouting& routing = program.routing;
    VolumeKnob& knob = program.knob;
};

} // namespace kestrune
