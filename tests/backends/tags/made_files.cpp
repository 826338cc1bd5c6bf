#include "backends/tags/made_files.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace kestrune {

namespace {

constexpr int mostToolMs = 60000;

} // namespace

std::optional<QByteArray> OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(mostToolMs)) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return std::nullopt;
    }
    return process.readAllStandardOutput();
}

QString MadeFiles::Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return {};
    }
    return file.fileName();
}

QString MadeFiles::Source() {
    QString path = Path(QStringLiteral("source.wav"));
    if (!QFile::exists(path)) {
        OutputOf(QStringLiteral("sox"),
                 QStringLiteral("-R -n -r 44100 -c 2 -b 16 %1 synth 3 pluck A3 pluck E4 gain -6")
                     .arg(path)
                     .split(QLatin1Char(' ')));
    }
    return path;
}

QString MadeFiles::Encode(const QString& name, const QStringList& options) {
    return QFile::exists(Path(name)) || EncodeAll({{name, options}}) ? Path(name) : QString();
}

bool MadeFiles::EncodeAll(const QList<std::pair<QString, QStringList>>& outputs) {
    QStringList arguments{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
                          QStringLiteral("-i"), Source()};
    for (const auto& [name, options] : outputs) {
        arguments << options << Path(name);
    }
    return OutputOf(QStringLiteral("ffmpeg"), arguments).has_value();
}

QByteArray ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::optional<Judged> JudgeByFfprobe(const QString& path) {
    const auto output = OutputOf(
        QStringLiteral("ffprobe"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-of"), QStringLiteral("json"),
         QStringLiteral("-select_streams"), QStringLiteral("a:0"), QStringLiteral("-show_entries"),
         QStringLiteral("stream=sample_rate,channels,duration:format=duration"), path});
    if (!output) {
        return std::nullopt;
    }
    const QJsonObject root = QJsonDocument::fromJson(*output).object();
    const QJsonObject stream = root.value(QLatin1String("streams")).toArray().at(0).toObject();
    const QJsonObject format = root.value(QLatin1String("format")).toObject();
    const QJsonObject& timed = stream.contains(QLatin1String("duration")) ? stream : format;
    Judged judged;
    judged.rateHz = stream.value(QLatin1String("sample_rate")).toString().toInt();
    judged.channels = stream.value(QLatin1String("channels")).toInt();
    judged.durationMs = timed.value(QLatin1String("duration")).toString().toDouble() * 1000;
    return judged;
}

} // namespace kestrune
