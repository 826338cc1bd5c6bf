// The line below the list: how much there is and how much of it is selected.
#pragma once

#include "playlist/playlist_rows.h"

namespace kestrune {

struct TotalTexts {
    QString LabelSeltal0;      // all rows: time and megabytes
    QString LabelSeltal1;      // selected rows
    QString PictureSelToalTip; // both sizes
    QString LabelTemp;         // both times, drawn in small digits
};

// What GetFileLong shows.
TotalTexts TotalTextsOf(const PlaylistRows& rows);

} // namespace kestrune
