// Saves two tags in turn to one file, for ever or as often as told: FILE KIND [TIMES [WORD...]]. KIND is 1
// or 2. With "unprivileged" the superuser, who may write everywhere, becomes somebody else first; with the
// name of a system call, that one is refused, as some file systems do. Ends with 3 at the first save that is
// not Ok, and tells a line for each other one.
#include "backends/tags/tag_information.h"

#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool refusesFchmod = false;
bool refusesLinkat = false;
bool refusesRename = false;

int Refused(int error) {
    errno = error;
    return -1;
}

bool BecomeNobody() {
    constexpr int nobody = 65534;
    return ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
}

// False for a word that says nothing.
bool Take(const QByteArray& word) {
    refusesFchmod = refusesFchmod || word == "fchmod";
    refusesLinkat = refusesLinkat || word == "linkat";
    refusesRename = refusesRename || word == "rename";
    return word == "unprivileged" ? BecomeNobody() : word == "fchmod" || word == "linkat" || word == "rename";
}

} // namespace

// The program's own come before those of the C library.
extern "C" int fchmod(int file, mode_t mode) noexcept {
    return refusesFchmod ? Refused(EPERM) : static_cast<int>(::syscall(SYS_fchmod, file, mode));
}
extern "C" int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    return refusesLinkat ? Refused(EPERM)
                         : static_cast<int>(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}
extern "C" int rename(const char* from, const char* to) noexcept {
    return refusesRename ? Refused(EBUSY)
                         : static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int main(int argc, char** argv) {
    using namespace kestrune;
    if (argc < 3) {
        return 2;
    }
    for (int word = 4; word < argc; ++word) {
        if (!Take(argv[word])) {
            return 2;
        }
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    const auto kind = static_cast<TagKind>(std::atoi(argv[2]));
    const int times = argc > 3 ? std::atoi(argv[3]) : -1;
    const auto info = MakeAudioInformation();
    info->SetTagVersion(kind);
    if (info->ReadTagFromFile(path) != Outcome::Ok) {
        return 2;
    }
    for (int time = 0; time != times; ++time) {
        info->Tag().title =
            QStringLiteral("Title %1")
                .arg(time % 2 == 0 ? QStringLiteral("odd") : QStringLiteral("even").repeated(400));
        info->Tag().comment = info->Tag().title;
        if (info->SaveTagToFile(path) != Outcome::Ok) {
            return 3;
        }
        std::puts("saved");
        std::fflush(stdout);
    }
    return 0;
}
