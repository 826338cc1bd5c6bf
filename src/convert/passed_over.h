// Where the converter passes failures over. Its rules go on after a call that failed; this is the one place
// that says so.
#pragma once

#include "components/outcome.h"

#include <QLoggingCategory>
#include <QString>

namespace kestrune {

Q_DECLARE_LOGGING_CATEGORY(convertLog) // "kestrune.convert", silent by default

// `call` names what was asked, `subject` the file that it was about, if any.
void PassOver(Outcome outcome, const char* call, const QString& subject = {});

} // namespace kestrune
