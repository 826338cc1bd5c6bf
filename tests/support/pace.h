// How long things take on the machine that runs the tests.
#pragma once

#include <QtGlobal>
#include <algorithm>

namespace kestrune {

// How much longer than on an idle machine of two cores; test.sh measures it once for a run.
inline double Slowness() {
    bool isMeasured = false;
    const double measured = qEnvironmentVariable("KESTRUNE_SLOWNESS").toDouble(&isMeasured);
    return isMeasured ? std::max(1.0, measured) : 2.0;
}

// For a limit after which a test fails: several times what the machine needs, which may become busier.
inline int Patience(int idleMs) {
    return static_cast<int>(idleMs * 4 * Slowness());
}

} // namespace kestrune
