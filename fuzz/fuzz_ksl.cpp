#include "fuzz_support.h"
#include "playlist/ksl_format.h"
#include "playlist/playlist_order.h"
#include "playlist/playlist_text.h"
#include "playlist/playlist_totals.h"

namespace kestrune::fuzz {
namespace {

void FillRows(PlaylistRows& rows, std::vector<PlaylistRow> read) {
    for (PlaylistRow& row : read) {
        row.fields[RowText].prepend(QString::number(rows.Count() + 1) + u'.');
        rows.Append(std::move(row));
    }
}

std::vector<PlaylistRow> StoreAndRead(const std::vector<PlaylistRow>& read) {
    PlaylistRows rows;
    FillRows(rows, read);
    const QByteArray bytes = EncodeKsl(rows);
    const auto count = static_cast<qsizetype>(read.size());
    Holds(bytes.size() == (count == 0 ? 59 : 1000 * count + 994), "a file is as long as its rows need");
    Holds(KslCount(bytes) == count, "the count is that of the rows");
    Holds(KslBuildOf(bytes) == kslBuild, "the header tells the build");
    return DecodeKsl(bytes);
}

bool Same(const std::vector<PlaylistRow>& left, const std::vector<PlaylistRow>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const PlaylistRow& a, const PlaylistRow& b) {
                          return a.fields == b.fields && a.selected == b.selected && a.bold == b.bold;
                      });
}

// Bytes of another coding may get longer once, and then their field may be too short for them. From then on
// a list is the same for ever.
void CheckStable(const std::vector<PlaylistRow>& read) {
    const std::vector<PlaylistRow> once = StoreAndRead(read);
    Holds(once.size() == read.size(), "no row is lost or added");
    Holds(Same(StoreAndRead(once), once), "rows come back");
    for (size_t i = 0; i < read.size(); ++i) {
        for (const RowField field : {RowText, SubTime, SubSize, SubFolder, SubFileName, SubFormats}) {
            Holds(once[i].fields[field].isEmpty() || once[i].fields[field] == read[i].fields[field],
                  "a text comes back whole or not at all");
        }
        Holds(once[i].selected == read[i].selected, "the selection comes back");
    }
}

void CheckRows(const std::vector<PlaylistRow>& read) {
    PlaylistRows rows;
    FillRows(rows, read);
    for (int index = 0; index <= 5; ++index) {
        OrderList(rows, index);
        Holds(rows.Count() == static_cast<int>(read.size()), "sorting keeps the rows");
    }
    Holds(TotalTextsOf(rows).LabelTemp.contains(u'/'), "the totals have both times");
    Holds(rows.SelectedSums().seconds <= rows.TotalSums().seconds, "the selected rows are some of all");
    while (rows.Count() > 0) {
        rows.Remove(rows.Count() / 2 + 1);
    }
    Holds(rows.TotalSums().seconds == 0 && rows.TotalSums().milliMegabytes == 0, "no rows have no sums");
    Holds(rows.SelectedCount() == 0, "no rows are selected");
}

} // namespace
} // namespace kestrune::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kestrune;
    if (size > fuzz::largestInput) {
        return 0;
    }
    const QByteArray bytes = fuzz::Input(data, size);
    const QByteArray present = KslBuildOf(bytes) < kslBuild ? ConvertOlderKsl(bytes) : bytes;
    fuzz::Holds(KslBuildOf(present) >= kslBuild, "a converted file is of this build");
    const std::vector<PlaylistRow> rows = DecodeKsl(present);
    fuzz::CheckStable(rows);
    fuzz::CheckRows(rows);
    return 0;
}
