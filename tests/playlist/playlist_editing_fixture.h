// A playlist whose rows are deleted and moved, with a log of what the window is told.
#pragma once

#include "playlist/ksl_format.h"
#include "playlist/playlist_editing.h"
#include "support/program_playlist.h"

#include <gtest/gtest.h>

namespace kestrune::rules {

using Texts = std::vector<std::string>;

class EditingTest : public testing::Test {
protected:
    EditingTest() {
        QObject::connect(&editing, &PlaylistEditing::RowShown, &editing,
                         [this](int row) { Note(QStringLiteral("Row %1").arg(row)); });
        QObject::connect(&editing, &PlaylistEditing::TotalsChanged, &editing,
                         [this] { Note(QStringLiteral("Totals %1").arg(list.rows.Count())); });
        QObject::connect(&editing, &PlaylistEditing::NeighboursChanged, &editing,
                         [this] { Note(QStringLiteral("Neighbours")); });
    }
    // Rows "1.a", "2.b", ... of files "/m/a.mp3", ...
    void Fill(int count) {
        for (int i = 0; i < count; ++i) {
            const QString name(QChar(u'a' + i));
            list.rows.Append(MakeRow(i + 1, name, QStringLiteral("01:00"), QStringLiteral("1.0m"),
                                     QStringLiteral("/m/"), name + QStringLiteral(".mp3")));
        }
    }
    void Select(std::initializer_list<int> selected) {
        list.rows.SelectOnly(0, 0);
        for (const int row : selected) {
            list.rows.SetSelected(row, true);
        }
    }
    QList<int> Selected() const {
        QList<int> selected;
        for (int row = 1; row <= list.rows.Count(); ++row) {
            if (list.rows.IsSelected(row)) {
                selected.append(row);
            }
        }
        return selected;
    }
    Texts RowTexts() const { return Column(list.rows, RowText); }
    // The titles of all rows, one letter each.
    std::string Titles() const {
        QString titles;
        for (int row = 1; row <= list.rows.Count(); ++row) {
            titles.append(list.rows.Title(row));
        }
        return Utf8(titles);
    }
    int RowsInDefaultFile() const {
        QFile file(list.DefaultFile());
        return file.open(QIODevice::ReadOnly) ? KslCount(file.read(2)) : -1;
    }
    // The value of a field after its row was moved.
    std::string Moved(RowField field, const QString& value) {
        list.rows.Clear();
        Fill(2);
        list.rows.SetField(1, field, value);
        editing.SwapListViewItem(1, 2);
        return Utf8(list.rows.Field(2, field));
    }
    void Note(const QString& entry) { log.append(entry); }

    rules::Playlist list;
    QStringList log;
    QString playFile;
    PlaylistEditing editing{list.state,
                            list.rows,
                            list.files,
                            list.prompts,
                            {[this] { return playFile; },
                             [this] { Note(QStringLiteral("StopPlay of %1").arg(list.rows.Count())); }}};
};

} // namespace kestrune::rules
