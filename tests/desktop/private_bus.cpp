#include "private_bus.h"

#include <QStringList>

namespace kestrune {

namespace {
constexpr int patienceMs = 10000;
}

bool PrivateBus::Start() {
    daemon.start(QStringLiteral("dbus-daemon"),
                 {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                  QStringLiteral("--print-address")});
    while (!daemon.canReadLine()) {
        if (!daemon.waitForReadyRead(patienceMs)) {
            return false;
        }
    }
    address = QString::fromLocal8Bit(daemon.readLine()).trimmed();
    return !address.isEmpty();
}

void PrivateBus::Kill() {
    if (daemon.state() != QProcess::NotRunning) {
        daemon.kill();
        daemon.waitForFinished(patienceMs);
    }
}

} // namespace kestrune
