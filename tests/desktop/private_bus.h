// A session bus of the test's own.
#pragma once

#include <QProcess>
#include <QString>

namespace kestrune {

class PrivateBus {
public:
    PrivateBus() = default;
    ~PrivateBus() { Kill(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // True once the bus can be connected to.
    bool Start();
    // Ends the bus as a crash would.
    void Kill();
    const QString& Address() const { return address; }

private:
    QProcess daemon;
    QString address;
};

} // namespace kestrune
