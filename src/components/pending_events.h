// Lets events that wait for the window run, at the places where a rule says so and nowhere else.
#pragma once

namespace kestrune {

class PendingEvents {
public:
    virtual ~PendingEvents() = default;
    // Window thread. Handlers of any kind may run inside, those of the caller's own window too: whatever the
    // caller read before the call may have changed after it.
    virtual void Run() = 0;
};

} // namespace kestrune
