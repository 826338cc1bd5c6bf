#include "app/options_record.h"
#include "app/playlist_columns.h"
#include "fuzz_support.h"

#include <cmath>

namespace kestrune::fuzz {
namespace {

bool Same(const OptionsRecord& left, const OptionsRecord& right) {
    return left.FftType == right.FftType && left.FftResolution == right.FftResolution &&
           left.PlayMode == right.PlayMode && left.EqBand == right.EqBand &&
           left.UseDefaultOnStartup == right.UseDefaultOnStartup && left.Items == right.Items &&
           left.CurPath == right.CurPath;
}

void CheckRecord(const QByteArray& bytes) {
    const OptionsRecord record = DecodeOptions(bytes);
    for (const float band : record.EqBand) {
        Holds(std::isfinite(band), "a band is a number");
    }
    const QByteArray stored = EncodeOptions(record, bytes);
    Holds(stored.size() >= bytes.size(), "the file gets no shorter");
    Holds(HoldsColumns(stored), "a stored record holds the columns");
    Holds(Same(DecodeOptions(stored), record), "the record comes back");
    Holds(EncodeOptions(record, stored) == stored, "storing it again changes nothing");
}

void CheckColumns(const PlaylistItems& items) {
    const ColumnWidths widths = WidthsFor(items, startColumnWidths);
    for (const int width : widths) {
        Holds(width >= 0, "no column is narrower than nothing");
    }
    Holds(WidthsFor(items, WidthsFor(items, widths)).back() == 0, "the last column never shows");
}

} // namespace
} // namespace kestrune::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kestrune;
    if (size <= fuzz::largestInput) {
        fuzz::CheckRecord(fuzz::Input(data, size));
        fuzz::CheckColumns(DecodeOptions(fuzz::Input(data, size)).Items);
    }
    return 0;
}
