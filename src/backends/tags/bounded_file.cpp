#include "backends/tags/bounded_file.h"

#include <QFileInfo>

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint64 fullBudgetBytes = 24 * 1024 * 1024;
// FLAC allows 16 MiB to each picture.
constexpr qint64 tagBudgetBytes = 256 * 1024 * 1024;
constexpr qint64 mostReads = 100000;
constexpr qint64 highestLeastCost = 2 * 1024; // blocks of usual size cost what they give

} // namespace

BoundedFile::BoundedFile(const QString& path) : file_(path) {
    RenewBudget();
}

Outcome BoundedFile::Open() {
    if (!QFileInfo(file_.fileName()).isFile() || !file_.open(QIODevice::ReadOnly)) {
        return Outcome::NotFound;
    }
    sizeBytes_ = file_.size();
    return Outcome::Ok;
}

void BoundedFile::Seek(qint64 position) {
    position_ = std::max<qint64>(position, 0);
}

qint64 BoundedFile::Read(char* out, qint64 bytes) {
    const qint64 left = std::min(sizeBytes_ - position_, budgetBytes_);
    const qint64 wanted = std::min(bytes, left);
    // A count in a broken file can ask for any number of things behind the end.
    budgetBytes_ -= std::max(std::max<qint64>(wanted, 0), leastCostBytes_);
    if (wanted <= 0 || (file_.pos() != position_ && !file_.seek(position_))) {
        return 0;
    }
    const qint64 got = std::max<qint64>(file_.read(out, wanted), 0);
    position_ += got;
    return got;
}

QByteArray BoundedFile::Read(qint64 bytes) {
    const qint64 left = std::clamp<qint64>(std::min(sizeBytes_ - position_, budgetBytes_), 0, bytes);
    QByteArray block(left, Qt::Uninitialized);
    block.truncate(Read(block.data(), left));
    return block;
}

QByteArray BoundedFile::ReadAt(qint64 position, qint64 bytes) {
    Seek(position);
    return Read(bytes);
}

void BoundedFile::RenewBudget() {
    SetBudget(fullBudgetBytes);
}

void BoundedFile::RenewBudgetForTag() {
    SetBudget(tagBudgetBytes);
}

void BoundedFile::SetBudget(qint64 bytes) {
    budgetBytes_ = bytes;
    leastCostBytes_ = std::min(bytes / mostReads, highestLeastCost);
}

} // namespace kestrune
