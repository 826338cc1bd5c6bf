// Where the editors pass failures over. They go on after a call that failed; this is the one place that says
// so.
#pragma once

#include "components/outcome.h"

#include <QString>

namespace kestrune {

// A line in the log "kestrune.editors", silent by default, for anything but Ok. `call` names what was asked,
// `subject` the file that it was about, if any.
void LogEditorFailure(Outcome outcome, const char* call, const QString& subject = {});

} // namespace kestrune
