#include "convert/con_path.h"
#include "fuzz_support.h"

namespace kestrune::fuzz {
namespace {

bool Same(const ConPathRecord& left, const ConPathRecord& right) {
    return left.inputFolder == right.inputFolder && left.outputFolder == right.outputFolder &&
           left.ripFolder == right.ripFolder;
}

void CheckRecord(const QByteArray& bytes) {
    const ConPathRecord record = DecodeConPath(bytes);
    Holds(record.inputFolder.size() + record.outputFolder.size() + record.ripFolder.size() <= bytes.size(),
          "no text comes from nowhere");
    const QByteArray stored = EncodeConPath(record, bytes);
    Holds(stored.size() >= bytes.size(), "the file gets no shorter");
    Holds(Same(DecodeConPath(stored), record), "the record comes back");
    Holds(EncodeConPath(record, stored) == stored, "storing it again changes nothing");
    Holds(Same(DecodeConPath(EncodeConPath(record, {})), record), "it does not need the old bytes");
}

} // namespace
} // namespace kestrune::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kestrune;
    if (size <= fuzz::largestInput) {
        fuzz::CheckRecord(fuzz::Input(data, size));
    }
    return 0;
}
