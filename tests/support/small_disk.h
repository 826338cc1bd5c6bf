// A disk that is soon full.
#pragma once

#include <csignal>

#include <sys/resource.h>

namespace kestrune {

// While it lives no file grows beyond so many bytes: writing fails as it does on a full disk.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes = 20000) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit before_ = {};
    void (*handler_)(int);
};

} // namespace kestrune
