#include "list_invariants.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kestrune;
    if (size <= fuzz::largestInput) {
        fuzz::CheckStable(fuzz::Input(data, size), ParseM3u, EncodeM3u);
    }
    return 0;
}
