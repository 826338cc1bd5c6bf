// The end of the program when it does not come from its window: by a signal, or with the desktop's session.
#pragma once

#include "playlist/playlist_files.h"
#include "playlist/playlist_rows.h"

#include <functional>

namespace kestrune {

// Window thread. To be made once the default playlist is loaded: what was not loaded may not be stored.
class ShutDown {
public:
    // `endProcess` asks nobody and stops nothing; it may return.
    ShutDown(PlaylistRows& rows, PlaylistFiles& files, std::function<void()> endProcess);

    // The session is about to end, which may be called off yet: the list is stored in index order, and
    // everything goes on.
    void StoreForSessionEnd();
    // Stores the list in index order and ends the process. Further calls do nothing.
    void End();
    // The event loop has ended, for whatever reason. Stores the list if nothing did.
    void EventsEnded();
    // The window was closed and has stored the list.
    void WindowClosed() { isStored_ = true; }

private:
    PlaylistRows& rows_;
    PlaylistFiles& files_;
    std::function<void()> endProcess_;
    bool isStored_ = false; // for good
    bool isEnding_ = false;
};

} // namespace kestrune
