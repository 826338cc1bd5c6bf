// The pending events of the running program.
#pragma once

#include "components/pending_events.h"

namespace kestrune {

class ApplicationEvents : public PendingEvents {
public:
    void Run() override;
    bool RunFor(int ms) override;
};

} // namespace kestrune
