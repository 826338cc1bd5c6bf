// What the main window's own kinds of controls are to a screen reader.
#pragma once

namespace kestrune {

// The window is a window that leaves out what is only a picture; menu labels, panels, lamps and the display
// have their roles. To be called before the window's controls are made; any number of calls. Window thread.
void InstallMainWindowAccess();

} // namespace kestrune
