#include "support/private_sound.h"

#include "support/pace.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace kestrune {

namespace {

const int startPatienceMs = Patience(10000);
constexpr int pollMs = 20;
// More than the server, the pipe and the reader hold together.
constexpr int onItsWayMs = 150;

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
    heard = std::make_unique<PipeReader>(root.filePath(QStringLiteral("heard.pipe")));
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
    const QString format = QStringLiteral(" format=s16le rate=44100 channels=2");
    const QString pipe = QDir(folder.path()).filePath(QStringLiteral("heard.pipe"));
    // The log tells each time when a stream had nothing more to play.
    server.start(
        QStringLiteral("pulseaudio"),
        {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
         QStringLiteral("--realtime=no"), QStringLiteral("--high-priority=no"),
         QStringLiteral("--disable-shm=yes"), QStringLiteral("--use-pid-file=no"),
         QStringLiteral("--log-target=stderr"), QStringLiteral("--log-level=debug"), QStringLiteral("-L"),
         QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket,
         QStringLiteral("-L"), QStringLiteral("module-pipe-sink sink_name=out file=") + pipe + format,
         QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=in norewinds=1") + format,
         QStringLiteral("-L"), QStringLiteral("module-remap-source source_name=line master=in.monitor")});
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

int PrivateSound::TimesRanDry() const {
    return static_cast<int>(Log().count(" underrun of '"));
}

QByteArray Capture::Stop() {
    const qint64 endMs = sound.ClockMs() + onItsWayMs;
    QElapsedTimer since;
    since.start();
    while (sound.ClockMs() < endMs && since.elapsed() < startPatienceMs) {
        QThread::msleep(pollMs);
    }
    return sound.Heard().DataFrom(beginFrame);
}

} // namespace kestrune
