// What the menus, the picture labels, the tool bar and the Alt keys run, and what is handed to each tool.
#pragma once

#include "app/program_state.h"
#include "components/user_prompts.h"
#include "playback/play_buttons.h"
#include "playlist/playlist_rows.h"
#include "tool_window/tool_windows.h"

#include <QObject>
#include <QString>

namespace kestrune {

// The menus that pop up, by the label that opens them.
enum class MainMenu { File = 0, Play = 1, Burn = 3, Convert = 4, Help = 6, Options = 7 };

// Window thread. The objects passed in must outlive it.
class MenuRouting : public QObject {
    Q_OBJECT
public:
    MenuRouting(ProgramState& state, PlayButtons& buttons, const PlaylistRows& rows, ToolWindows& windows,
                UserPrompts& prompts, QObject* parent = nullptr);

    // A click on one of the eight labels, 0 to 7.
    void LabelMenu_Click(int index);
    // Key codes: 18 is Alt, letters are those of their capitals. True if the key was used.
    bool KeyDown(int code);
    void KeyUp();
    bool IsAltDown() const { return altDown_; }

    void mBurn_Click(int index);    // 0, 2, 3, 4
    void mConvert_Click(int index); // 0, 2, 3, 4
    void mnpop_Click(int index);    // 7, 9 to 11, 13 to 15
    void mHelp_Click(int index);    // 1, 3, 9, 11, 13
    void ImageToolBar_Click(int index);
    // Nothing for an empty list; without a current row the first one is taken.
    void EditTags();
    void RunHtmlHelp(const QString& topic);

signals:
    void PopUpAtLabel(MainMenu menu);
    void PopUpAtCursor(MainMenu menu);

private:
    void Rip();
    void Open(ToolWindow tool);

    ProgramState& state_;
    PlayButtons& buttons_;
    const PlaylistRows& rows_;
    ToolWindows& windows_;
    UserPrompts& prompts_;
    bool altDown_ = false;
};

} // namespace kestrune
