// An open output, as the writer thread sees it, and what opens one.
#pragma once

#include "components/outcome.h"

#include <QString>
#include <memory>

namespace kestrune {

// Open from construction to destruction, for one format. All calls on one thread; none waits for sound.
class OutputDevice {
public:
    OutputDevice() = default;
    OutputDevice(const OutputDevice&) = delete;
    OutputDevice& operator=(const OutputDevice&) = delete;
    virtual ~OutputDevice() = default;

    // False once the device has gone; every other call then fails or does nothing.
    virtual bool IsAlive() = 0;
    // Frames that can be written now, below 0 when the device has gone.
    virtual qint64 WritableFrames() = 0;
    // Interleaved; no more than WritableFrames. Sound starts by itself. False when the device has gone. After
    // a time without frames the next ones are played all the same, none lost.
    virtual bool Write(const qint16* samples, qint64 frames) = 0;
    // How many of the frames written have not been heard yet; below 0 when that is not known right now.
    virtual qint64 UnheardFrames() = 0;
    // Takes back what can be taken back and is ready for new frames. Returns how many of the frames written
    // will never be heard, exactly where the device can tell; below 0 when the device has gone.
    virtual qint64 Drop() = 0;
    // Asked again and again after the last Write: true once the last frame was heard.
    virtual bool IsDrained() = 0;
};

// All calls on the thread that uses the devices.
class OutputSource {
public:
    OutputSource() = default;
    OutputSource(const OutputSource&) = delete;
    OutputSource& operator=(const OutputSource&) = delete;
    virtual ~OutputSource() = default;

    // `openIndex` is the device that the caller holds open, -1 for none; it counts without being tried.
    virtual int Count(int openIndex) = 0;
    virtual QString Name(int index) = 0; // empty for an index that does not exist
    struct Opened {
        Outcome outcome = Outcome::DeviceFailed;
        std::unique_ptr<OutputDevice> device; // null unless outcome is Ok
    };
    // NotSupported for a format that the device does not take, else DeviceFailed.
    virtual Opened Open(int index, int sampleRateHz, int channels) = 0;
};

} // namespace kestrune
