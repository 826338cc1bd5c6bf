// The main window: shows what the rules say and forwards what the user does.
#pragma once

#include "app/options.h"
#include "display/audio_display.h"
#include "main_window/main_controls.h"
#include "main_window/main_menus.h"
#include "main_window/menu_routing.h"
#include "main_window/start_up.h"
#include "playback/play_buttons.h"
#include "playback/transport.h"
#include "playback/volume_knob.h"
#include "playlist/admission.h"
#include "playlist/list_tip.h"
#include "playlist/playlist_editing.h"
#include "playlist/playlist_files.h"
#include "skin/skinned_window.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <array>

namespace kestrune {

struct FrmMainParts {
    const MainPictures& pictures;
    ProgramState& state;
    Options& options;
    PlaylistRows& rows;
    Admission& admission;
    PlaylistFiles& files;
    PlaylistEditing& editing;
    Transport& transport;
    PlayButtons& buttons;
    MenuRouting& routing;
    VolumeKnob& knob;
    ListTip& listTip;
    AudioDisplay& display;
    KSTAudioPlayer2& audioPlayer;
};

// All parts must outlive the window. Window thread.
class FrmMain : public SkinnedWindow, public MainWindowSteps {
    Q_OBJECT
public:
    explicit FrmMain(const FrmMainParts& parts);

    // --- Steps of the start ---
    void Hide() override { hide(); }
    void FillColourList() override;
    void PrepareDisplay() override;
    void PrepareSkin() override;
    void PaintSkin() override;
    void SizeAndCentre() override;
    void ShowKnob() override;
    void Show() override;

    // Sets the volume as the knob does, 0 to 65535.
    void SetVolume(qint32 volume);
    // Brings the window to the front.
    void Raise();

signals:
    void VolumeChanged();
    void Unloaded(); // the window closes, and the list is stored

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // What stands in the list's place.
    enum class Panel { Playlist, Equalizer, Colours };

    void ConnectTransport();
    void ConnectLooks();
    void ConnectPlaylist();
    void ConnectListView();
    void ConnectControls();
    void ConnectToolBar();
    void ConnectOptions();
    void ConnectMenus();

    bool HandleKey(QEvent* event);
    void LetGoOfAlt();
    void ShowLetters(bool shown);
    void PopUpAtLabel(MainMenu menu);
    void PopUpAtCursor(MainMenu menu);
    void ShowPanel(Panel panel);
    // What takes the keys in a panel.
    QWidget* FirstOf(Panel panel) const;
    void PutPicClip();
    void ClearTimer();
    void ShowDigits(const ClockDigits& digits);
    void GetFileLong();
    // The two times, and the sums under the list at their places.
    void ShowTotals(const QString& times);
    void ShowTime(qint64 ms, qint64 totalMs);
    void ShowName(const QString& fileName);
    void DispKhz(bool show, const QString& formatText);
    void ShowModes();
    // The mouse is over this widget of the window.
    void ToolBarMouse(const QWidget* under);
    void ShowToolBar();
    void RowClicked(int row);
    void RepaintNow();
    void SetWaitCursor(bool on);
    void VolumeTurned(qint32 volume);

    FrmMainParts parts_;
    MainControls controls_;
    MainMenus menus_;
    ToolBarAnimation toolBar_;
    QTimer TimerToolBar;
    QTimer TimerVolume; // of the idle picture
    bool waiting_ = false;
    QElapsedTimer lastRepaint_;
    std::array<int, 4> spokenDigits_{-1, -1, -1, -1}; // that the clock's name tells
};

} // namespace kestrune
