// What the transport's buttons need of recording.
#pragma once

namespace kestrune {

// Window thread.
class Recording {
public:
    virtual ~Recording() = default;
    // The record button. Asks for all that is missing and may open windows; returns when these are closed and
    // the recording runs, or when there is none to be.
    virtual void StartRecording() = 0;
    // Ends the recording that runs. False when none does.
    virtual bool StopRecording() = 0;
};

} // namespace kestrune
