// A sound server of the test's own, and a recording of what it plays.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace kestrune {

// The same server as tools/private_sound.sh starts: null sink "out" (s16le, 44100 Hz, stereo), source "line"
// that hears the sink "in". While it lives, this process and its children reach no other server:
// PULSE_SERVER, HOME and XDG_RUNTIME_DIR point to it, and come back with the destructor.
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
    // What the server wrote, for a failed test.
    QByteArray Log() const;

private:
    void SetVariable(const char* name, const QByteArray& value);

    QTemporaryDir folder;
    QProcess server;
    QMap<QByteArray, QByteArray> former; // null for a variable that was not set
};

// Records a source of the server from Start to Stop, as s16le at 44100 Hz.
class Capture {
public:
    explicit Capture(const QString& toFile, const QString& fromDevice = QStringLiteral("out.monitor"));
    ~Capture();
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    // True once sound, or silence, arrives.
    bool Start(int channels = 2);
    // Waits for what is still on its way and returns all of it.
    QByteArray Stop();

private:
    QProcess recorder;
    QString file;
    QString device;
};

} // namespace kestrune
