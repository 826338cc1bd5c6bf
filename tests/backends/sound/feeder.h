// Plays a source as the window does: a block at a time, when the player asks for it.
#pragma once

#include "components/audio_player.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <functional>
#include <random>

namespace kestrune {

// Noise whose first and last samples, and every frame, differ from silence, so that what is played can be
// told from the silence around it and every frame is where it belongs.
inline QByteArray SeededNoise(qint64 samples, unsigned seed) {
    std::mt19937 random(seed);
    QByteArray noise(samples * 2, '\0');
    auto* out = reinterpret_cast<qint16*>(noise.data());
    for (qint64 i = 0; i < samples; ++i) {
        const auto sample = static_cast<qint16>(random());
        out[i] = sample == 0 ? qint16{1} : sample;
    }
    return noise;
}

class Feeder {
public:
    Feeder(KSTAudioPlayer2& fedPlayer, QByteArray data, int blockLengthMs = 2000)
        : player(fedPlayer), source(std::move(data)), blockMs(blockLengthMs) {
        connections = {
            QObject::connect(&player, &KSTAudioPlayer2::RequestOnLoadArray, [this] { ++requests, Feed(); }),
            QObject::connect(&player, &KSTAudioPlayer2::EndArrayPlay, [this] { ++endedBlocks, Feed(); }),
            QObject::connect(&player, &KSTAudioPlayer2::EndPlay, [this] {
                ++ends;
                if (onEnd) {
                    onEnd();
                }
            })};
    }
    ~Feeder() {
        for (const QMetaObject::Connection& connection : connections) {
            QObject::disconnect(connection);
        }
    }
    Feeder(const Feeder&) = delete;
    Feeder& operator=(const Feeder&) = delete;

    void Feed() {
        const QByteArray block = source.mid(position, player.BytesForMs(blockMs));
        position += block.size();
        if (!block.isEmpty()) {
            player.WriteBlock(block);
        }
    }

    std::function<void()> onEnd;
    qint64 position = 0; // in the source, of the next block
    int requests = 0;
    int endedBlocks = 0;
    int ends = 0;

private:
    KSTAudioPlayer2& player;
    QByteArray source;
    int blockMs;
    QList<QMetaObject::Connection> connections;
};

// Lets events come until `isDone` or the time is over; true when done.
template <class Condition>
bool ProcessUntil(Condition isDone, int patienceMs) {
    QElapsedTimer since;
    since.start();
    while (!isDone()) {
        if (since.elapsed() > patienceMs) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::usleep(500);
    }
    return true;
}

inline void ProcessFor(int ms) {
    ProcessUntil([] { return false; }, ms);
}

} // namespace kestrune
