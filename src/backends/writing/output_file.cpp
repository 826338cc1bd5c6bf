#include "backends/writing/output_file.h"

#include "app/failure_log.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace kestrune {

namespace {

// A file that the disk is given as it grows: when it is whole, little is left to wait for.
class FlowingFile : public QTemporaryFile {
public:
    using QTemporaryFile::QTemporaryFile;

protected:
    qint64 writeData(const char* data, qint64 bytes) override {
        constexpr qint64 stepBytes = Q_INT64_C(4) << 20;
        const qint64 written = QTemporaryFile::writeData(data, bytes);
        unsentBytes_ += std::max<qint64>(written, 0);
        if (unsentBytes_ >= stepBytes) {
            if (!flush()) {
                return -1;
            }
            // Only begun, and not waited for; where it is not known the end takes longer.
            static_cast<void>(sync_file_range(handle(), 0, 0, SYNC_FILE_RANGE_WRITE));
            unsentBytes_ = 0;
        }
        return written;
    }

private:
    qint64 unsentBytes_ = 0;
};

// As many links in a row as the system itself follows.
constexpr int mostLinks = 40;

// Where a path leads: also through a link to a file that is not there yet.
QString LinksFollowed(const QString& path) {
    QString target = path;
    for (int link = 0; link < mostLinks; ++link) {
        const QFileInfo info(target);
        if (!info.isSymLink()) {
            return target;
        }
        target = info.symLinkTarget();
    }
    return target;
}

} // namespace

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

Outcome OutputFile::Open(const QString& path) {
    path_ = LinksFollowed(path);
    const QFileInfo info(path_);
    if (!info.exists()) {
        return OpenNew(path_);
    }
    if (!info.isFile() || !info.isWritable()) {
        qCWarning(logCodecs) << "not a file that can be written:" << path_;
        return Outcome::WriteFailed;
    }
    return OpenBeside(path_);
}

Outcome OutputFile::OpenNew(const QString& path) {
    auto file = std::make_unique<QFile>(path);
    if (path.isEmpty() || !file->open(QIODevice::ReadWrite | QIODevice::NewOnly)) {
        qCWarning(logCodecs) << "cannot create" << path << file->errorString();
        return Outcome::WriteFailed;
    }
    file_ = std::move(file);
    return Outcome::Ok;
}

Outcome OutputFile::OpenBeside(const QString& path) {
    const QString folder = QFileInfo(path).absolutePath();
    auto beside = std::make_unique<FlowingFile>(folder + QStringLiteral("/.kestrune-XXXXXX"));
    if (!beside->open()) {
        qCWarning(logCodecs) << "cannot create a file beside" << path << beside->errorString();
        return Outcome::WriteFailed;
    }
    beside_ = std::move(beside);
    return Outcome::Ok;
}

QFileDevice& OutputFile::File() {
    return beside_ ? static_cast<QFileDevice&>(*beside_) : *file_;
}

QIODevice& OutputFile::Device() {
    return File();
}

bool OutputFile::Clear() {
    return File().flush() && File().seek(0) && File().resize(0);
}

bool OutputFile::Shorten(qint64 bytes) {
    return File().flush() && File().resize(bytes);
}

bool OutputFile::TakePlace() {
    // Asked for first, since a file without a name gets one only then.
    const QString temporary = beside_->fileName();
    const bool stored = beside_->flush() && beside_->error() == QFileDevice::NoError;
    // Some mounted file systems give every file the same rights, and refuse to be asked for others: that is
    // no reason to throw a result away.
    if (stored && !beside_->setPermissions(QFile::permissions(path_))) {
        qCDebug(logCodecs) << "the rights of" << path_ << "could not be given on";
    }
    // Not QFile::rename, which refuses to replace a file.
    if (!stored || fsync(beside_->handle()) != 0 ||
        std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path_).constData()) != 0) {
        return false;
    }
    beside_->setAutoRemove(false);
    return true;
}

Outcome OutputFile::Commit() {
    bool done = false;
    if (beside_) {
        done = TakePlace();
        beside_.reset();
    } else if (file_) {
        done = file_->flush() && file_->error() == QFileDevice::NoError;
        file_.reset();
    }
    if (!done) {
        qCWarning(logCodecs) << "could not finish" << path_;
    }
    return done ? Outcome::Ok : Outcome::WriteFailed;
}

void OutputFile::Discard() {
    beside_.reset();
    if (file_) {
        file_->remove();
        file_.reset();
    }
}

} // namespace kestrune
