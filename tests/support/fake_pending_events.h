// Pending events that are whatever the test wants to happen at that point.
#pragma once

#include "components/pending_events.h"

#include <functional>

namespace kestrune {

class FakePendingEvents : public PendingEvents {
public:
    int runs = 0;
    std::function<void()> onRun;

    void Run() override {
        ++runs;
        if (onRun) {
            onRun();
        }
    }
};

} // namespace kestrune
