// A file that is written in memory at first and goes to its place later.
#pragma once

#include <QBuffer>
#include <QIODevice>

#include <functional>
#include <memory>

namespace kestrune {

// Open for reading and writing from construction on. Who writes to it does not notice when it moves. One
// thread at a time.
class MovingDevice : public QIODevice {
public:
    MovingDevice();

    // Copies what was written to `place`, which is empty, can be moved in and outlives this; from then on all
    // goes there. False if it could not take all; this is of no more use then. `onProgress` is told the bytes
    // copied so far, every now and then; the rest is left out once it gives false.
    using Progress = std::function<bool(qint64 copiedBytes)>;
    bool MoveTo(QIODevice& place, const Progress& onProgress = {});

    qint64 size() const override;
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 bytes) override;
    qint64 writeData(const char* data, qint64 bytes) override;

private:
    std::unique_ptr<QBuffer> memory_; // until it moves
    QIODevice* place_;                // either
};

} // namespace kestrune
