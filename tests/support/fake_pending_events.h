// Pending events that are whatever the test wants to happen at that point.
#pragma once

#include "components/pending_events.h"

#include <QList>
#include <functional>

namespace kestrune {

class FakePendingEvents : public PendingEvents {
public:
    int runs = 0;          // of both kinds
    QList<int> spansMs;    // of RunFor; nothing is waited for
    bool isEnding = false; // the program is to end
    std::function<void()> onRun;

    void Run() override {
        ++runs;
        if (onRun) {
            onRun();
        }
    }
    bool RunFor(int ms) override {
        spansMs.append(ms);
        Run();
        return !isEnding;
    }
};

} // namespace kestrune
