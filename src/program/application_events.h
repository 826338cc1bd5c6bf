// The pending events of the running program.
#pragma once

#include "components/pending_events.h"

#include <QCoreApplication>

namespace kestrune {

class ApplicationEvents : public PendingEvents {
public:
    void Run() override { QCoreApplication::processEvents(); }
};

} // namespace kestrune
