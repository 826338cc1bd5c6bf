// The list for a screen reader: a list whose items are made when they are asked for, so that a long playlist
// costs nothing.
#pragma once

namespace kestrune {

// Makes every PlaylistView known to assistive programs, with its rows. Any number of calls; window thread.
void InstallPlaylistAccessible();

} // namespace kestrune
