// The log of this folder, silent unless it is switched on.
#pragma once

#include <QLoggingCategory>

namespace kestrune {

Q_DECLARE_LOGGING_CATEGORY(logTags) // "kestrune.tags"

} // namespace kestrune
