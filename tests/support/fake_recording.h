// A recorder that only notes that it runs.
#pragma once

#include "playback/recording.h"

namespace kestrune {

class FakeRecording : public Recording {
public:
    bool isOn = false;
    int starts = 0;
    int stops = 0; // that ended something

    void StartRecording() override {
        ++starts;
        isOn = true;
    }
    bool StopRecording() override {
        const bool wasOn = isOn;
        stops += wasOn ? 1 : 0;
        isOn = false;
        return wasOn;
    }
};

} // namespace kestrune
