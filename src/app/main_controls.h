// The controls of the main window, each under its name, at its place.
#pragma once

#include "playback/equalizer_panel.h"
#include "playback/position_bar_widget.h"
#include "playback/transport.h"
#include "playback/volume_knob_view.h"
#include "playlist/playlist_view.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <array>

namespace kestrune {

inline constexpr int mainWindowWidth = 393;
inline constexpr int mainWindowHeight = 385;
inline constexpr int totalsRight = 383;
inline constexpr int menuLabelCount = 8;
inline constexpr int listButtonCount = 6;

// All of them are children of the window and go with it.
struct MainControls {
    QLabel* LabelCaption;
    QLabel* LabelName;
    std::array<QPushButton*, 2> ImageWin;
    std::array<QPushButton*, menuLabelCount> LabelMenu;
    std::array<QPushButton*, transportButtonCount> ImagePlayButton;
    std::array<QLabel*, 3> ImageSmall;
    std::array<QPushButton*, 3> ImageRepeatModeBut;
    std::array<QPushButton*, listButtonCount> ImageListCmd;
    std::array<QLabel*, 4> ImageData;
    std::array<QLabel*, 2> ImageData1;
    QLabel* Image44100;
    QLabel* ImageKBPS;
    std::array<QLabel*, 2> LabelSeltal;
    QLabel* PictureSelToal;
    QLabel* LabelTemp;
    QFrame* KSTAudioDisplay1;
    QListWidget* ListView1;
    QPushButton* Command1;
    PositionBar* positionBar;
    VolumeKnobView* volumeKnob;
    PlaylistView* ListViewPlaylist;
    EqualizerPanel* KSTEqualizer21; // in the list's place
    QPushButton* ImageChgLstBnd;    // shows the one or the other
};

MainControls MakeMainControls(QWidget* window, PlaylistRows& rows, VolumeKnob& knob);

} // namespace kestrune
