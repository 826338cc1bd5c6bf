// Which signal of the rules goes to which control, and which click to which rule.
#include "main_window/frm_main.h"

namespace kestrune {

void FrmMain::ConnectTransport() {
    Transport* transport = &parts_.transport;
    connect(transport, &Transport::LampShown, this, [this](Lamp lamp) {
        for (size_t i = 0; i < controls_.ImageSmall.size(); ++i) {
            controls_.ImageSmall[i]->setVisible(static_cast<int>(lamp) == static_cast<int>(i));
        }
    });
    connect(transport, &Transport::PauseCaption, menus_.mnuPause, &QAction::setText);
    connect(transport, &Transport::NameShown, this, &FrmMain::ShowName);
    connect(transport, &Transport::ThumbVisible, controls_.positionBar, &PositionBar::SetThumbVisible);
    connect(transport, &Transport::PositionReset, controls_.positionBar, &PositionBar::WalkToStart);
    connect(transport, &Transport::ClockCleared, this, &FrmMain::ClearTimer);
    connect(transport, &Transport::KhzShown, this, &FrmMain::DispKhz);
    connect(transport, &Transport::RowShown, controls_.ListViewPlaylist, &PlaylistView::EnsureVisible);
    connect(transport, &Transport::TimeShown, this, &FrmMain::ShowTime);
    connect(transport, &Transport::RowsChanged, this, &FrmMain::GetFileLong);
    connect(transport, &Transport::DisplayCleared, this, [this] { parts_.display.DrawBlock({}); });
    connect(transport, &Transport::ChangeColorEnabled, controls_.colourPanel,
            &ColourPanel::SetChangeColorEnabled);
}

void FrmMain::ConnectLooks() {
    Transport* transport = &parts_.transport;
    connect(transport, &Transport::ButtonEnabled, this, [this](int index, bool enabled) {
        controls_.ImagePlayButton[static_cast<size_t>(index)]->setEnabled(enabled);
    });
    connect(transport, &Transport::PlayPressed, this,
            [this] { controls_.ImagePlayButton[ButtonPlay]->SetPressedLook(true); });
    connect(transport, &Transport::PausePressed, controls_.ImagePlayButton[ButtonPause],
            &ImageButton::SetPressedLook);
    connect(transport, &Transport::ButtonsReturned, this, [this] {
        Chrome().Hover().ReturnButton();
        for (ImageButton* button : controls_.ImagePlayButton) {
            button->SetPressedLook(false);
        }
    });
}

void FrmMain::ConnectPlaylist() {
    Admission* admission = &parts_.admission;
    PlaylistFiles* files = &parts_.files;
    PlaylistEditing* editing = &parts_.editing;
    PlaylistView* list = controls_.ListViewPlaylist;
    connect(admission, &Admission::RowShown, list, &PlaylistView::EnsureVisible);
    connect(admission, &Admission::TotalsChanged, this, &FrmMain::GetFileLong);
    connect(admission, &Admission::WaitCursor, this, &FrmMain::SetWaitCursor);
    connect(files, &PlaylistFiles::TotalsChanged, this, &FrmMain::GetFileLong);
    connect(files, &PlaylistFiles::WindowRepaint, this, &FrmMain::RepaintNow);
    connect(files, &PlaylistFiles::FilesAdded, &parts_.transport, &Transport::FilesAdded);
    connect(files, &PlaylistFiles::NeighboursChanged, &parts_.transport, &Transport::SetPreNextButton);
    connect(files, &PlaylistFiles::ListLoaded, &parts_.transport, &Transport::ListLoaded);
    connect(editing, &PlaylistEditing::RowShown, list, &PlaylistView::EnsureVisible);
    connect(editing, &PlaylistEditing::RowsSwapped, list, &PlaylistView::FollowSwap);
    connect(editing, &PlaylistEditing::TotalsChanged, this, &FrmMain::GetFileLong);
    connect(editing, &PlaylistEditing::NeighboursChanged, &parts_.transport, &Transport::SetPreNextButton);
}

void FrmMain::ConnectListView() {
    PlaylistView* list = controls_.ListViewPlaylist;
    list->UseTip(&parts_.listTip);
    connect(list, &PlaylistView::RowClicked, this, &FrmMain::RowClicked);
    connect(list, &PlaylistView::RowActivated, this,
            [this](int row) { parts_.buttons.ListViewPlaylist_DblClick(row); });
    connect(list, &PlaylistView::AddRequested, &parts_.files, &PlaylistFiles::AddFilesByDialog);
    // The program that the files come from waits until the drop has returned.
    connect(list, &PlaylistView::FilesDropped, &parts_.files, &PlaylistFiles::AddDroppedFiles,
            Qt::QueuedConnection);
    connect(list, &PlaylistView::MenuRequested, menus_.popmn,
            [this](const QPoint& at) { menus_.popmn->popup(at); });
    for (size_t i = 0; i < controls_.ImageListCmd.size(); ++i) {
        connect(controls_.ImageListCmd[i], &QAbstractButton::clicked, &parts_.editing,
                [this, i] { parts_.editing.ImageListCmd_Click(static_cast<int>(i)); });
    }
    connect(&parts_.options, &Options::ColumnsChanged, this,
            [this] { controls_.ListViewPlaylist->SetColumns(parts_.options.Columns()); });
}

void FrmMain::ConnectControls() {
    for (size_t i = 0; i < controls_.ImagePlayButton.size(); ++i) {
        connect(controls_.ImagePlayButton[i], &QAbstractButton::clicked, this,
                [this, i] { parts_.buttons.ImagePlayButton_Click(static_cast<int>(i)); });
    }
    for (size_t i = 0; i < controls_.ImageRepeatModeBut.size(); ++i) {
        connect(controls_.ImageRepeatModeBut[i], &QAbstractButton::clicked, this, [this, i] {
            parts_.options.ImageRepeatModeBut_Click(static_cast<int>(i));
            ShowModes();
        });
    }
    connect(controls_.ImageWin[0], &QAbstractButton::clicked, this, &QWidget::close);
    connect(controls_.ImageWin[1], &QAbstractButton::clicked, this, [this] {
        setWindowTitle(controls_.LabelCaption->text());
        showMinimized();
    });
    connect(controls_.positionBar, &PositionBar::DragStarted, this,
            [this] { parts_.state.SeekDragging = true; });
    connect(controls_.positionBar, &PositionBar::DragCancelled, this,
            [this] { parts_.state.SeekDragging = false; });
    connect(controls_.positionBar, &PositionBar::Sought, this,
            [this](double lineWidth) { parts_.transport.SeekToLine(lineWidth, PositionBar::thumbWidth); });
    connect(controls_.volumeKnob, &VolumeKnobView::VolumeChosen, this, &FrmMain::VolumeTurned);
    connect(controls_.ImageChgLstBnd, &QAbstractButton::clicked, this, [this] {
        ShowPanel(controls_.ListViewPlaylist->isHidden() ? Panel::Playlist : Panel::Equalizer);
    });
    connect(controls_.ImageColour, &QAbstractButton::clicked, this,
            [this] { ShowPanel(controls_.colourPanel->isHidden() ? Panel::Colours : Panel::Playlist); });
    connect(controls_.colourPanel, &ColourPanel::PropertyChosen, this,
            [this](int number, qint32 value) { parts_.display.SetProperty(number, value); });
}

void FrmMain::ConnectToolBar() {
    for (size_t i = 1; i < controls_.ImageToolBar.size(); ++i) {
        connect(controls_.ImageToolBar[i], &QAbstractButton::clicked, &parts_.routing,
                [this, i] { parts_.routing.ImageToolBar_Click(static_cast<int>(i)); });
    }
    connect(&TimerToolBar, &QTimer::timeout, this, [this] {
        toolBar_.Tick();
        ShowToolBar();
    });
    connect(&TimerVolume, &QTimer::timeout, this, [this] {
        if (toolBar_.IdleTick()) {
            ShowToolBar();
        }
    });
}

void FrmMain::ConnectOptions() {
    Options* options = &parts_.options;
    connect(options, &Options::Changed, this, &FrmMain::ShowModes);
    connect(options, &Options::FftTypeChosen, this, [this](int type, int intervalMs) {
        parts_.display.SetProperty(DisplayKind, type);
        parts_.audioPlayer.SetTimerInterval(intervalMs);
        PutPicClip();
    });
    connect(options, &Options::FftSizeChosen, this,
            [this](int frames) { parts_.display.SetProperty(DisplayFftSize, frames); });
    connect(controls_.KSTEqualizer21, &EqualizerPanel::GainsChanged, options, &Options::SetBands);
    connect(options, &Options::BandsChanged, this, [this] {
        controls_.KSTEqualizer21->ShowGains(parts_.options.Bands());
        parts_.audioPlayer.EnableEqualizer(true);
        parts_.audioPlayer.SetEqualizer(parts_.options.Bands());
    });
}

void FrmMain::ConnectMenus() {
    for (size_t i = 0; i < controls_.LabelMenu.size(); ++i) {
        connect(controls_.LabelMenu[i], &QAbstractButton::clicked, &parts_.routing,
                [this, i] { parts_.routing.LabelMenu_Click(static_cast<int>(i)); });
    }
    connect(&parts_.routing, &MenuRouting::PopUpAtLabel, this, &FrmMain::PopUpAtLabel);
    connect(&parts_.routing, &MenuRouting::PopUpAtCursor, this, &FrmMain::PopUpAtCursor);
    connect(&menus_, &MainMenus::StartChosen, this, [this] { parts_.buttons.Start(); });
    connect(&menus_, &MainMenus::PauseChosen, this, [this] { parts_.buttons.Pause(); });
    connect(&menus_, &MainMenus::StopChosen, this, [this] { parts_.buttons.Stop(); });
    connect(&menus_, &MainMenus::ExitChosen, this, &QWidget::close);
    QWidget* display = controls_.KSTAudioDisplay1;
    connect(display, &QWidget::customContextMenuRequested, menus_.mnuOptions,
            [this, display](const QPoint& at) { menus_.mnuOptions->popup(display->mapToGlobal(at)); });
}

} // namespace kestrune
