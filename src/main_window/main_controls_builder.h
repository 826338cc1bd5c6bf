// Makes the main window's controls.
#pragma once

#include "main_window/main_controls.h"

namespace kestrune {

// What the controls show. All must outlive the window.
struct MainControlParts {
    const MainPictures& pictures;
    HoverKeeper& hover;
    PlaylistRows& rows;
    VolumeKnob& knob;
    AudioDisplay& display;
};

// Places and names all controls of the window, puts the picture buttons into their groups and fixes the order
// of the Tab key.
MainControls MakeMainControls(QWidget* window, const MainControlParts& parts);

} // namespace kestrune
