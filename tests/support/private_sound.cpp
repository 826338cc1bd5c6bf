#include "support/private_sound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace kestrune {

namespace {

constexpr int startPatienceMs = 10000;
constexpr int pollMs = 20;
// More than the recorder and the server hold together.
constexpr int onItsWayMs = 400;

bool ServerAnswers() {
    QProcess probe;
    probe.start(QStringLiteral("pactl"), {QStringLiteral("set-default-sink"), QStringLiteral("out")});
    return probe.waitForFinished(startPatienceMs) && probe.exitCode() == 0;
}

} // namespace

PrivateSound::PrivateSound() {
    const QDir root(folder.path());
    root.mkpath(QStringLiteral("home"));
    root.mkpath(QStringLiteral("run"));
    const QFile::Permissions own = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QFile::setPermissions(root.filePath(QStringLiteral("run")), own);
    SetVariable("HOME", QFile::encodeName(root.filePath(QStringLiteral("home"))));
    SetVariable("XDG_RUNTIME_DIR", QFile::encodeName(root.filePath(QStringLiteral("run"))));
    SetVariable("PULSE_SERVER", "unix:" + QFile::encodeName(root.filePath(QStringLiteral("run/native"))));
}

PrivateSound::~PrivateSound() {
    Kill();
    for (auto it = former.cbegin(); it != former.cend(); ++it) {
        if (it.value().isNull()) {
            qunsetenv(it.key().constData());
        } else {
            qputenv(it.key().constData(), it.value());
        }
    }
}

void PrivateSound::SetVariable(const char* name, const QByteArray& value) {
    former.insert(name, qEnvironmentVariableIsSet(name) ? qgetenv(name) : QByteArray());
    qputenv(name, value);
}

bool PrivateSound::Start() {
    const QString socket = QDir(folder.path()).filePath(QStringLiteral("run/native"));
    QFile::remove(socket);
    server.setStandardErrorFile(QDir(folder.path()).filePath(QStringLiteral("server.log")));
    // norewinds: the monitor would lose frames whenever the sink took something back.
    const QString sink =
        QStringLiteral("module-null-sink sink_name=%1 format=s16le rate=44100 channels=2 norewinds=1");
    server.start(QStringLiteral("pulseaudio"),
                 {QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                  QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--realtime=no"),
                  QStringLiteral("--high-priority=no"), QStringLiteral("--disable-shm=yes"),
                  QStringLiteral("--use-pid-file=no"), QStringLiteral("--log-target=stderr"),
                  QStringLiteral("-L"),
                  QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket,
                  QStringLiteral("-L"), sink.arg(QStringLiteral("out")), QStringLiteral("-L"),
                  sink.arg(QStringLiteral("in")), QStringLiteral("-L"),
                  QStringLiteral("module-remap-source source_name=line master=in.monitor")});
    if (!server.waitForStarted(startPatienceMs)) {
        return false;
    }
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < startPatienceMs && server.state() == QProcess::Running) {
        if (QFile::exists(socket) && ServerAnswers()) {
            return QProcess::execute(QStringLiteral("pactl"),
                                     {QStringLiteral("set-default-source"), QStringLiteral("line")}) == 0;
        }
        QThread::msleep(pollMs);
        server.waitForFinished(0);
    }
    return false;
}

void PrivateSound::Kill() {
    if (server.state() != QProcess::NotRunning) {
        server.kill();
        server.waitForFinished(startPatienceMs);
    }
}

QByteArray PrivateSound::Log() const {
    QFile log(QDir(folder.path()).filePath(QStringLiteral("server.log")));
    return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
}

Capture::Capture(const QString& toFile, const QString& fromDevice) : file(toFile), device(fromDevice) {}

Capture::~Capture() {
    if (recorder.state() != QProcess::NotRunning) {
        recorder.kill();
        recorder.waitForFinished(startPatienceMs);
    }
}

bool Capture::Start(int channels) {
    recorder.setStandardOutputFile(file);
    recorder.start(QStringLiteral("parec"),
                   {QStringLiteral("--device=") + device, QStringLiteral("--raw"),
                    QStringLiteral("--format=s16le"), QStringLiteral("--rate=44100"),
                    QStringLiteral("--channels=%1").arg(channels), QStringLiteral("--latency-msec=20")});
    if (!recorder.waitForStarted(startPatienceMs)) {
        return false;
    }
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < startPatienceMs && QFileInfo(file).size() == 0) {
        QThread::msleep(pollMs);
    }
    return QFileInfo(file).size() > 0;
}

QByteArray Capture::Stop() {
    QThread::msleep(onItsWayMs);
    recorder.terminate();
    recorder.waitForFinished(startPatienceMs);
    QFile recorded(file);
    return recorded.open(QIODevice::ReadOnly) ? recorded.readAll() : QByteArray();
}

} // namespace kestrune
