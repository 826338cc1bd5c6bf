// The converter window as the program puts it together, over fakes.
#pragma once

#include "convert/converterfrm_dialog.h"
#include "program/converter_tool.h"
#include "support/fake_components.h"

#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {

class ConverterWindowTest : public testing::Test {
protected:
    ConverterWindowTest() { program.AppPath = home.path(); }

    // Loads and shows the window, as exec does, which runs its own events.
    void Open() {
        window.Load();
        window.open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        // Where no test looks for the mouse.
        QTest::mouseMove(&window, {300, 348});
    }

    // A file on disk, and for the fake decoder: `bytes` of mono samples at 1000 Hz.
    QString MakeFile(const QString& name, int bytes = 8000) {
        const QString path = music.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(bytes, '\1'));
        FakeAudioFile::Content content;
        content.pcm = QByteArray(bytes, '\1');
        content.rateHz = 1000;
        content.channels = 1;
        input.files.insert(path, content);
        return path;
    }

    template <typename Control = QWidget>
    Control* Find(const char* name) {
        auto* control = window.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    // On the box, not on its words' far end.
    void Tick(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton, {}, {8, 10}); }
    void MoveMouse(QWidget* widget, const QPoint& place) { QTest::mouseMove(widget, place); }

    QTreeView* List() { return Find<QTreeView>("ListViewInput"); }
    QPoint CellPoint(int row, int column = ColumnName) {
        return List()->visualRect(rules.Rows.index(row - 1, column)).center();
    }
    void TickRow(int row) {
        const QRect cell = List()->visualRect(rules.Rows.index(row - 1, ColumnName));
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, {cell.left() + 9, cell.center().y()});
    }
    // Types a folder into a path's text box.
    void TypePath(const char* label, const char* box, const QString& path) {
        Click(label);
        QTest::keyClicks(Find(box), path);
    }

    QTemporaryDir home;
    QTemporaryDir music;
    QTemporaryDir results;
    ProgramState program;
    PlaylistRows playlist;
    FakeComponents components;
    ConverterTool tool{components, program, playlist};

    // The parts that tests look at.
    FakeAudioFile& output = *components.files[0];
    FakeAudioFile& input = *components.files[1];
    FakeUserPrompts& prompts = components.prompts;
    FakePendingEvents& pending = components.events;
    FakeClock& clock = components.clock;
    ConverterRules& rules = tool.rules;
    ConverterfrmDialog window{{rules, output, prompts}};
};

} // namespace kestrune
