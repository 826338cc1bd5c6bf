// The colours of the display that the user chooses, in the order of their list.
#pragma once

#include "components/audio_display.h"

#include <array>

namespace kestrune {

struct DisplayColour {
    const char* name;
    int property; // number of the display's property
};

inline constexpr std::array<DisplayColour, 6> displayColours = {{
    {"BackColor", DisplayBackColor},
    {"BorderColor", DisplayBorderColor},
    {"InscriptionsColor", DisplayInscriptionsColor},
    {"LevelsColor", DisplayLevelsColor},
    {"MaxLevelColor", DisplayMaxLevelColor},
    {"ScaleColor", DisplayScaleColor},
}};

} // namespace kestrune
