// Lets events that wait for the window run, at the places where a rule says so and nowhere else.
#pragma once

namespace kestrune {

class PendingEvents {
public:
    virtual ~PendingEvents() = default;
    // Window thread. Handlers of any kind may run inside, those of the caller's own window too: whatever the
    // caller read before the call may have changed after it.
    virtual void Run() = 0;
    // Lets events run, also those that come up meanwhile, until so much time has passed, and sleeps where
    // there are none; with 0 ms or less it does not wait. The handlers are those of Run, and one that takes
    // long, or that waits by a call of its own, makes the time longer. False when the program is to end: it
    // returns before its time then, and at once if called again, so that a loop which polls has to leave.
    virtual bool RunFor(int ms) = 0;
};

} // namespace kestrune
