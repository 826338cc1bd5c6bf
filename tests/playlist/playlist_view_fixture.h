// The list and its scroll bar in a window of their own, over rows without files.
#pragma once

#include "playlist/playlist_scroll_bar.h"
#include "playlist/playlist_view.h"

#include <QtTest/QtTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {

class PlaylistViewTest : public testing::Test {
protected:
    static constexpr int listWidth = 360;
    static constexpr int listHeight = 119;

    PlaylistViewTest() {
        window.resize(400, 140);
        list.setGeometry(4, 4, listWidth, listHeight);
        bar.setGeometry(368, 4, PlaylistScrollBar::barWidth, listHeight);
        other.setGeometry(384, 4, 10, 10);
        other.setFocusPolicy(Qt::StrongFocus);
        list.setAccessibleName(QStringLiteral("Playlist"));
    }
    void Show() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    // Rows "1.title 1", "2.title 2", ... of one to nine minutes.
    void Fill(int count) {
        for (int number = 1; number <= count; ++number) {
            PlaylistRow row;
            row.fields[RowText] = QStringLiteral("%1.title %1").arg(number);
            row.fields[SubTime] = QStringLiteral("0%1:00").arg(number % 10);
            row.fields[SubType] = QStringLiteral("mp3");
            row.fields[SubSize] = QStringLiteral("1.0m");
            row.fields[SubFolder] = QStringLiteral("/music/");
            row.fields[SubFileName] = QStringLiteral("file%1.mp3").arg(number);
            row.fields[SubFormats] = QStringLiteral("format %1").arg(number);
            rows.Append(row);
        }
    }
    QPoint RowPoint(int row) const { return list.RowRect(row).center(); }
    void Click(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, RowPoint(row));
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
    QImage Picture() { return list.viewport()->grab().toImage(); }
    static void Wheel(QWidget* target, QPoint angle, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF place = QRectF(target->rect()).center();
        QWheelEvent event(place, target->mapToGlobal(place), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        // Only an event of the system goes on from a child to its parent.
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(target, &event);
    }

    PlaylistRows rows;
    QWidget window;
    PlaylistView list{rows, &window};
    PlaylistScrollBar bar{list, &window};
    QWidget other{&window}; // takes the focus away
};

} // namespace kestrune
