// The controls of the main window, each under its name, at its place.
#pragma once

#include "display/audio_display_view.h"
#include "display/colour_panel.h"
#include "display/display_frame.h"
#include "main_window/main_layout.h"
#include "main_window/main_pictures.h"
#include "main_window/menu_label.h"
#include "main_window/small_total_view.h"
#include "main_window/tool_bar_animation.h"
#include "playback/equalizer_panel.h"
#include "playback/position_bar_widget.h"
#include "playback/transport.h"
#include "playback/volume_knob_view.h"
#include "playlist/playlist_scroll_bar.h"
#include "playlist/playlist_view.h"
#include "skin/hover_keeper.h"
#include "skin/image_button.h"
#include "skin/picture_label.h"

#include <QLabel>
#include <array>

namespace kestrune {

inline constexpr int menuLabelCount = 8;
inline constexpr int listButtonCount = 6;
inline constexpr int stateLampCount = 3;

// All of them are children of the window and go with it.
struct MainControls {
    QWidget* LabelTitle; // what the window is dragged by
    QLabel* LabelCaption;
    QLabel* LabelName;
    std::array<ImageButton*, 2> ImageWin;
    std::array<MenuLabel*, menuLabelCount> LabelMenu;
    std::array<ImageButton*, toolBarItems> ImageToolBar;
    std::array<PictureLabel*, toolBarItems> toolFrames; // the moving pictures over the tool bar's buttons
    QLabel* LabelFormat;                                // what is playing, in words
    std::array<ImageButton*, transportButtonCount> ImagePlayButton;
    std::array<PictureLabel*, stateLampCount> ImageSmall;
    std::array<ImageButton*, 3> ImageRepeatModeBut;
    std::array<ImageButton*, listButtonCount> ImageListCmd;
    std::array<PictureLabel*, 4> ImageData;
    std::array<PictureLabel*, 2> ImageData1;
    PictureLabel* Image44100;
    PictureLabel* ImageKBPS;
    std::array<QLabel*, 2> LabelSeltal;
    SmallTotalView* PictureSelToal;
    QLabel* LabelTemp;
    std::array<PictureLabel*, framePieceCount> PictureClp; // the display's frame
    AudioDisplayView* KSTAudioDisplay1;
    ColourPanel* colourPanel; // in the list's place
    PositionBar* positionBar;
    VolumeKnobView* volumeKnob;
    PlaylistView* ListViewPlaylist;
    PlaylistScrollBar* listScrollBar;
    EqualizerPanel* KSTEqualizer21; // in the list's place
    ImageButton* ImageChgLstBnd;    // shows the list or the equalizer
    ImageButton* ImageColour;       // shows the colour panel
};

} // namespace kestrune
