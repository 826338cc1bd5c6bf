#include "main_window/shut_down.h"

#include "main_window/start_up.h"

#include <utility>

namespace kestrune {

ShutDown::ShutDown(PlaylistRows& rows, PlaylistFiles& files, std::function<void()> endProcess)
    : rows_(rows), files_(files), endProcess_(std::move(endProcess)) {}

void ShutDown::StoreForSessionEnd() {
    UnloadMainWindow(rows_, files_);
}

void ShutDown::End() {
    if (isEnding_) {
        return;
    }
    isEnding_ = true;
    EventsEnded();
    endProcess_();
}

void ShutDown::EventsEnded() {
    if (!isStored_) {
        isStored_ = true;
        UnloadMainWindow(rows_, files_);
    }
}

} // namespace kestrune
