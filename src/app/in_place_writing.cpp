#include "app/in_place_writing.h"

#include "app/file_bytes.h"

#include <QtGlobal>

#include <algorithm>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune {

namespace {

constexpr qint64 blockBytes = 256 * 1024;

struct Stretch {
    qint64 offset = 0;
    qint64 lengthBytes = 0;
};

class InPlaceWriting {
public:
    InPlaceWriting(int wanted, int target, int undo)
        : wanted_(wanted),
          target_(target),
          undo_(undo),
          newBytes_(FileSize(wanted)),
          oldBytes_(FileSize(target)),
          new_(blockBytes),
          old_(blockBytes) {}

    bool Run() {
        if (newBytes_ < 0 || oldBytes_ < 0) {
            return false;
        }
        if (Reserve() && WriteBlocks() && ::ftruncate(target_, newBytes_) == 0 && ::fsync(target_) == 0) {
            return true;
        }
        PutBack();
        return false;
    }

private:
    // A full disk is found out before anything is harmed. Not every file system can reserve.
    bool Reserve() const {
        return newBytes_ <= oldBytes_ ||
               ::fallocate(target_, FALLOC_FL_KEEP_SIZE, oldBytes_, newBytes_ - oldBytes_) == 0 ||
               errno != ENOSPC;
    }

    bool WriteBlocks() {
        for (qint64 end = newBytes_; end > 0;) {
            const qint64 start = (end - 1) / blockBytes * blockBytes;
            if (!WriteBlock(start, end - start)) {
                return false;
            }
            end = start;
        }
        return true;
    }

    // What lies behind the old end has nothing to be put back.
    bool WriteBlock(qint64 start, qint64 lengthBytes) {
        const qint64 held = std::clamp<qint64>(oldBytes_ - start, 0, lengthBytes);
        if (ReadAt(wanted_, new_.data(), lengthBytes, start) != lengthBytes ||
            ReadAt(target_, old_.data(), held, start) != held) {
            return false;
        }
        const auto differs = [this](qint64 at) {
            return new_[static_cast<size_t>(at)] != old_[static_cast<size_t>(at)];
        };
        qint64 first = 0;
        while (first < held && !differs(first)) {
            ++first;
        }
        qint64 last = lengthBytes;
        while (lengthBytes == held && last > first && !differs(last - 1)) {
            --last;
        }
        if (first == last) {
            return true;
        }
        return Keep(start, {first, std::min(last, held) - first}) &&
               WriteAt(target_, new_.data() + first, last - first, start + first);
    }

    bool Keep(qint64 start, const Stretch& inBlock) {
        if (inBlock.lengthBytes <= 0) {
            return true;
        }
        kept_.push_back({start + inBlock.offset, inBlock.lengthBytes});
        keptBytes_ += inBlock.lengthBytes;
        return WriteAt(undo_, old_.data() + inBlock.offset, inBlock.lengthBytes,
                       keptBytes_ - inBlock.lengthBytes);
    }

    void PutBack() {
        qint64 at = 0;
        for (const Stretch& stretch : kept_) {
            if (ReadAt(undo_, old_.data(), stretch.lengthBytes, at) == stretch.lengthBytes) {
                WriteAt(target_, old_.data(), stretch.lengthBytes, stretch.offset);
            }
            at += stretch.lengthBytes;
        }
        if (::ftruncate(target_, oldBytes_) == 0) {
            ::fsync(target_);
        }
    }

    int wanted_;
    int target_;
    int undo_;
    qint64 newBytes_;
    qint64 oldBytes_;
    std::vector<char> new_;
    std::vector<char> old_;
    std::vector<Stretch> kept_; // in the order of the undo file
    qint64 keptBytes_ = 0;
};

} // namespace

bool WriteInPlace(int wanted, int target, int undo) {
    return InPlaceWriting(wanted, target, undo).Run();
}

} // namespace kestrune
