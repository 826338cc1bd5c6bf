// Whether windows may have transparent pixels.
#pragma once

namespace kestrune {

// True where what lies behind a window shines through its transparent pixels: on Wayland always; on X11 while
// a compositing manager owns the selection _NET_WM_CM_Sn of the screen, which may change while the program
// runs; without a screen always. Window thread; on X11 one round trip to the server.
bool HasCompositor();

} // namespace kestrune
