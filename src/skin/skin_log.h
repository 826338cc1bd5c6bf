// Where mistakes of the artwork go, and failures of the window system that the user is not told of.
#pragma once

#include <QLoggingCategory>

namespace kestrune {

Q_DECLARE_LOGGING_CATEGORY(skinLog)

} // namespace kestrune
