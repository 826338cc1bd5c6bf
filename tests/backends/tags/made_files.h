// Files made at test time by programs that are not this project's, and their judgement of them.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>
#include <utility>

namespace kestrune {

// What a program printed, or nothing if it is missing, failed or took above a minute.
std::optional<QByteArray> OutputOf(const QString& program, const QStringList& arguments);

inline constexpr int sourceSeconds = 3;

// A folder that goes away with the object.
class MadeFiles {
public:
    QString Path(const QString& name) const { return dir_.filePath(name); }

    // Writes bytes; the path.
    QString Write(const QString& name, const QByteArray& bytes) const;

    // Exactly sourceSeconds of two plucked tones, 44100 Hz stereo 16 bit.
    QString Source();

    // The source through ffmpeg with these output options; the path, or empty after a failure. A file of that
    // name that is there already is taken as it is.
    QString Encode(const QString& name, const QStringList& options);

    // Many at once, which saves starting a program for each: pairs of name and options. False after a
    // failure.
    bool EncodeAll(const QList<std::pair<QString, QStringList>>& outputs);

private:
    QTemporaryDir dir_;
};

QByteArray ContentOf(const QString& path);

// ffprobe's view of the first audio stream.
struct Judged {
    int rateHz = 0;
    int channels = 0;
    double durationMs = 0;
};
std::optional<Judged> JudgeByFfprobe(const QString& path);

} // namespace kestrune
