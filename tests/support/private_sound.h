// A sound server of the test's own, and a recording of what it plays.
#pragma once

#include "support/pipe_reader.h"

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace kestrune {

// Sink "out" (s16le, 44100 Hz, stereo), which this process hears, and source "line" that hears the sink "in".
// While it lives, this process and its children reach no other server: PULSE_SERVER, HOME and XDG_RUNTIME_DIR
// point to it, and come back with the destructor.
class PrivateSound {
public:
    PrivateSound();
    ~PrivateSound();
    PrivateSound(const PrivateSound&) = delete;
    PrivateSound& operator=(const PrivateSound&) = delete;

    // Starts the server, also after Kill; true once it answers.
    bool Start();
    // Ends the server as a crash would.
    void Kill();
    qint64 ProcessId() const { return server.processId(); }
    QString Folder() const { return folder.path(); }
    // What the server wrote since Start, for a failed test.
    QByteArray Log() const;
    // How often since Start a stream had nothing more to play, apart from its end and from pauses.
    int TimesRanDry() const;
    // What "out" plays, and its clock.
    const PipeReader& Heard() const { return *heard; }
    // Milliseconds of sound or silence that were heard since the beginning.
    qint64 ClockMs() const { return heard->Frames() * 1000 / PipeReader::rateHz; }

private:
    void SetVariable(const char* name, const QByteArray& value);

    QTemporaryDir folder;
    std::unique_ptr<PipeReader> heard;
    QProcess server;
    QMap<QByteArray, QByteArray> former; // null for a variable that was not set
};

// What is heard from Start to Stop.
class Capture {
public:
    explicit Capture(const PrivateSound& heardSound) : sound(heardSound) {}

    void Start() { beginFrame = sound.Heard().Frames(); }
    // Waits for what is still on its way and returns all of it.
    QByteArray Stop();

private:
    const PrivateSound& sound;
    qint64 beginFrame = 0;
};

} // namespace kestrune
