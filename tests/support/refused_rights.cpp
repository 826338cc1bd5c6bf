#include "support/refused_rights.h"

#include <cerrno>

#include <dlfcn.h>
#include <sys/stat.h>

namespace kestrune {

namespace {

bool areRefused = false;

bool Refuse() {
    if (areRefused) {
        ++RefusedRights::count;
        errno = EPERM;
    }
    return areRefused;
}

} // namespace

int RefusedRights::count = 0;

RefusedRights::RefusedRights() {
    count = 0;
    areRefused = true;
}

RefusedRights::~RefusedRights() {
    areRefused = false;
}

} // namespace kestrune

// They stand before those of the C library, for the program and for all libraries that it uses.
extern "C" {

int chmod(const char* path, mode_t mode) noexcept {
    using Call = int (*)(const char*, mode_t);
    static const auto next = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "chmod"));
    return kestrune::Refuse() ? -1 : next(path, mode);
}

int fchmod(int file, mode_t mode) noexcept {
    using Call = int (*)(int, mode_t);
    static const auto next = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "fchmod"));
    return kestrune::Refuse() ? -1 : next(file, mode);
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
    using Call = int (*)(int, const char*, mode_t, int);
    static const auto next = reinterpret_cast<Call>(dlsym(RTLD_NEXT, "fchmodat"));
    return kestrune::Refuse() ? -1 : next(folder, path, mode, flags);
}
}
