#include "backends/formats/lav_settings.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <cstddef>

namespace kestrune {

namespace {

// The libraries reserve, and clear, what a file says that a part of it will take before they see that it ends
// earlier: up to 2 GiB for a file of 60 bytes. Four letters that are read as a size always ask for more than
// this; the largest honest need, the index of an MP4 file, passes it beyond 100 hours.
constexpr size_t mostBytesAtOnce = size_t{512} * 1024 * 1024;

} // namespace

void SetUpLav() {
    // They write to standard error by themselves; failures are told by the results of calls.
    av_log_set_level(AV_LOG_QUIET);
    av_max_alloc(mostBytesAtOnce);
}

} // namespace kestrune
