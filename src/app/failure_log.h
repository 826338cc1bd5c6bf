// The log of failures that the user is not told of. One place passes a failure over, and says so here.
#pragma once

#include <QLoggingCategory>

namespace kestrune {

// Each is silent unless QT_LOGGING_RULES asks for it; "kestrune.codecs" and so on, by what failed. Failures
// are warnings. Any thread.
Q_DECLARE_LOGGING_CATEGORY(logCodecs)

} // namespace kestrune
