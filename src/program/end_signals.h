// The signals by which the system asks a program to end.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <memory>

namespace kestrune {

// Hears SIGTERM, SIGINT and SIGHUP for as long as it lives. One that was ignored before, as under nohup,
// stays so. One object at a time; window thread.
class EndSignals : public QObject {
    Q_OBJECT
public:
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

signals:
    // From the event loop, once for each signal or for several at once.
    void EndRequested();

private:
    static constexpr std::array<int, 3> heard = {SIGTERM, SIGINT, SIGHUP};

    void TakeSignals();

    std::array<int, 2> pipe_ = {-1, -1}; // end to read, end to write
    std::array<struct sigaction, heard.size()> before_{};
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace kestrune
