// What the user changes in the list after files were added: deleting and moving rows.
#pragma once

#include "app/program_state.h"
#include "components/user_prompts.h"
#include "playlist/playlist_files.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <functional>

namespace kestrune {

// Buttons beside the list, by the index of ImageListCmd.
enum class ListCommand { Add = 0, Delete = 1, Open = 2, Save = 3, Up = 4, Down = 5 };

// What editing needs of playback, which itself stands on the playlist. Both must be set.
struct EditedPlayback {
    std::function<QString()> PlayFile; // full path of the file last started, empty if there was none
    std::function<void()> StopPlay;
};

// Window thread. All that is passed in must outlive the object. Row numbers are 1-based.
class PlaylistEditing : public QObject {
    Q_OBJECT
public:
    PlaylistEditing(ProgramState& state, PlaylistRows& rows, PlaylistFiles& files, UserPrompts& prompts,
                    EditedPlayback playback, QObject* parent = nullptr);

    // Asks, then deletes the selected rows and numbers the others anew. The default playlist is saved also
    // when the answer is No.
    void DelFilefromList();
    // Moves the selected rows by one place: each changes places with its neighbour, in the direction of
    // travel. The row at the edge has none. CurIndex and LastIndex do not follow.
    void ListUpDown(bool up);
    // Row a goes through a record of fixed fields on its way to b, and what does not fit into them is lost:
    // title 380 bytes, time 20, type 3, size 20, folder 200, file name 172, format string 197. A value also
    // ends before the first "//" that it holds. Numbers and sort keys stay with the places. Numbers outside
    // the list do nothing.
    void SwapListViewItem(int a, int b);

    // --- What the user does ---
    void ImageListCmd_Click(int index);
    void DeleteKey(); // released

signals:
    void RowShown(int row);
    void RowsSwapped(int a, int b); // places that have changed their rows
    void TotalsChanged();
    void NeighboursChanged(); // Previous and Next are to be set

private:
    void StopIfDeleted();
    int MoveUp();
    int MoveDown();
    void SaveDefault();

    ProgramState& state_;
    PlaylistRows& rows_;
    PlaylistFiles& files_;
    UserPrompts& prompts_;
    EditedPlayback playback_;
};

} // namespace kestrune
