// The main window: shows what the rules say and forwards what the user does.
#pragma once

#include "app/main_controls.h"
#include "app/main_menus.h"
#include "app/options.h"
#include "app/start_up.h"
#include "playback/transport.h"
#include "playback/volume_knob.h"
#include "playlist/admission.h"
#include "playlist/playlist_files.h"

#include <QElapsedTimer>
#include <QWidget>

namespace kestrune {

struct FrmMainParts {
    ProgramState& state;
    Options& options;
    PlaylistRows& rows;
    Admission& admission;
    PlaylistFiles& files;
    Transport& transport;
    VolumeKnob& knob;
    KSTAudioPlayer2& audioPlayer;
};

// All that is passed in must outlive the window. Window thread.
class FrmMain : public QWidget, public MainWindowSteps {
    Q_OBJECT
public:
    explicit FrmMain(const FrmMainParts& parts);

    // MainWindowSteps
    void Hide() override { hide(); }
    void FillColourList() override;
    void PrepareDisplay() override {}
    void PrepareSkin() override;
    void PaintSkin() override;
    void SizeAndCentre() override;
    void ShowKnob() override;
    void Show() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ConnectTransport();
    void ConnectPlaylist();
    void ConnectControls();
    void PopUp(int menu);
    void GetFileLong();
    void ShowTime(qint64 ms, qint64 totalMs);
    void ShowName(const QString& fileName);
    void ShowKhz(bool show, const QString& formatText);
    void ShowModes();
    void SetVolumeFromKnob(qint32 volume);
    void RowClicked(int row);
    void SetWaitCursor(bool on);
    void RepaintNow();

    FrmMainParts parts_;
    MainControls controls_;
    MainMenus menus_;
    bool waiting_ = false;
    QElapsedTimer lastRepaint_;
};

} // namespace kestrune
