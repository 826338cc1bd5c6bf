#include "backends/writing/output_file.h"

#include "app/failure_log.h"
#include "app/file_replacement.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <fcntl.h>

namespace kestrune {

namespace {

// A file that the disk is given as it grows: when it is whole, little is left to wait for.
class FlowingFile : public QFile {
protected:
    qint64 writeData(const char* data, qint64 bytes) override {
        constexpr qint64 stepBytes = Q_INT64_C(4) << 20;
        const qint64 written = QFile::writeData(data, bytes);
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

} // namespace

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

Outcome OutputFile::Open(const QString& path) {
    path_ = LinksFollowed(path);
    return QFileInfo::exists(path_) ? OpenBeside(path_) : OpenNew(path_);
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
    auto replacement = std::make_unique<FileReplacement>(path, Replacing::KeepsName);
    auto file = std::make_unique<FlowingFile>();
    if (replacement->Begin() != Outcome::Ok ||
        !file->open(replacement->Descriptor(), QIODevice::ReadWrite, QFileDevice::DontCloseHandle)) {
        qCWarning(logCodecs) << "not a file that can be replaced:" << path;
        return Outcome::WriteFailed;
    }
    replacement_ = std::move(replacement);
    file_ = std::move(file);
    return Outcome::Ok;
}

QIODevice& OutputFile::Device() {
    return *file_;
}

bool OutputFile::Clear() {
    return file_->flush() && file_->seek(0) && file_->resize(0);
}

bool OutputFile::Shorten(qint64 bytes) {
    return file_->flush() && file_->resize(bytes);
}

// Not after a write that failed, as on a full disk (EncodingOutput::Close): the old file stays then, and a
// new one stays as far as it was written.
Outcome OutputFile::Commit() {
    bool done = file_ && file_->flush() && file_->error() == QFileDevice::NoError;
    file_.reset();
    if (replacement_) {
        done = done && replacement_->Commit() == Outcome::Ok;
        replacement_.reset();
    }
    if (!done) {
        qCWarning(logCodecs) << "could not finish" << path_;
    }
    return done ? Outcome::Ok : Outcome::WriteFailed;
}

void OutputFile::Discard() {
    if (file_ && !replacement_) {
        file_->remove();
    }
    file_.reset();
    replacement_.reset();
}

} // namespace kestrune
