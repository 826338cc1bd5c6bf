// The fixture of the tests of opening and saving playlists.
#pragma once

#include "playlist/ksl_format.h"
#include "playlist/playlist_files.h"
#include "support/program_playlist.h"

#include <gtest/gtest.h>

namespace kestrune::rules {

using Texts = std::vector<std::string>;

class PlaylistFilesTest : public testing::Test {
protected:
    // Opens or saves by the dialog, in which the user chooses the file.
    void OpenByDialog(const QString& file) { ByDialog(QStringLiteral("OPEN"), file); }
    void SaveByDialog(const QString& file) { ByDialog(QStringLiteral("SAVE"), file); }
    void ByDialog(const QString& operation, const QString& file) {
        list.prompts.filesToChoose = {QStringList{file}};
        list.files.OpenSavePlayList(operation, false);
    }
    void SaveDefault() { list.files.OpenSavePlayList(QStringLiteral("SAVE"), true); }
    // Two rows of files that exist, "a.mp3" and "b.mp3".
    void AddTwoRows() {
        for (const char* name : {"a.mp3", "b.mp3"}) {
            list.AddMusic(QString::fromUtf8(name), QString::fromUtf8(name).left(1).toUpper());
            list.admission.AddFiletoList(list.MusicFolder(), QString::fromUtf8(name));
        }
    }
    // One row of an earlier list, which a load is to replace or to leave.
    void AddOldRow() {
        list.rows.Append(MakeRow(1, QStringLiteral("old"), QStringLiteral("00:01"), QStringLiteral("0.0m"),
                                 QStringLiteral("/"), QStringLiteral("old.mp3")));
    }
    Texts Titles() { return Column(list.rows, RowText); }
    int RowsInDefaultFile() {
        QFile file(list.DefaultFile());
        return file.open(QIODevice::ReadOnly) ? KslCount(file.read(2)) : -1;
    }
    Playlist list;
};

} // namespace kestrune::rules
