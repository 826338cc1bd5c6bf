// Reads the pipe that a sound server plays into, at the pace of a sound card.
#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <mutex>
#include <thread>

namespace kestrune {

// The pipe holds its writer back, so the server's clock is this reading: on a machine that is slow for a
// while everything takes longer, and no frame is lost. Of what was late only a little is caught up, as a
// card's own buffer does: for more the server would need more of a program in a short time than a card ever
// does. While nobody plays, the server writes nothing; silence then takes the place of what is played, so
// that the clock goes on. s16le at 44100 Hz, stereo.
class PipeReader {
public:
    static constexpr int frameBytes = 4;
    static constexpr int rateHz = 44100;

    // Makes the pipe. The server may come and go.
    explicit PipeReader(const QString& path);
    ~PipeReader();
    PipeReader(const PipeReader&) = delete;
    PipeReader& operator=(const PipeReader&) = delete;

    // Read since the beginning.
    qint64 Frames() const { return frames; }
    // What was read from that frame on.
    QByteArray DataFrom(qint64 frame) const;

private:
    void ReadOn();
    // True when there is something to read within that time.
    bool IsReady(int patienceMs) const;

    int pipe = -1;
    mutable std::mutex mutex;
    QByteArray data; // under the mutex
    std::atomic<qint64> frames = 0;
    std::atomic<bool> isEnding = false;
    std::thread thread; // last, so that it finds all of the above
};

} // namespace kestrune
