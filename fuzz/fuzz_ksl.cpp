#include "fuzz_support.h"
#include "playlist/ksl_format.h"
#include "playlist/ksl_long_texts.h"
#include "playlist/playlist_order.h"
#include "playlist/playlist_text.h"
#include "playlist/playlist_totals.h"
#include "support/earlier_ksl_reader.h"

namespace kestrune::fuzz {
namespace {

void FillRows(PlaylistRows& rows, std::vector<PlaylistRow> read) {
    for (PlaylistRow& row : read) {
        row.fields[RowText].prepend(QString::number(rows.Count() + 1) + u'.');
        rows.Append(std::move(row));
    }
}

QByteArray Store(const std::vector<PlaylistRow>& read) {
    PlaylistRows rows;
    FillRows(rows, read);
    const QByteArray bytes = EncodeKsl(rows);
    const auto count = static_cast<qsizetype>(read.size());
    const qsizetype records = count == 0 ? 59 : 1000 * count + 994;
    const qsizetype longTexts = FindKslLongTexts(bytes);
    Holds(bytes.size() == records || longTexts == records + 6, "a file is as long as its rows need");
    Holds(KslCount(bytes) == count, "the count is that of the rows");
    Holds(KslBuildOf(bytes) == kslBuild, "the header tells the build");
    Holds(IsOwnKsl(bytes), "a stored file is of our own form");
    return bytes;
}

bool Same(const std::vector<PlaylistRow>& left, const std::vector<PlaylistRow>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const PlaylistRow& a, const PlaylistRow& b) {
                          return a.fields == b.fields && a.selected == b.selected && a.bold == b.bold;
                      });
}

// Texts that a record of a file can hold are no longer than their fields are wide, so all come back, unless a
// mark in them or behind them is not what it was.
void CheckStable(const std::vector<PlaylistRow>& read) {
    const std::vector<PlaylistRow> once = DecodeKsl(Store(read));
    Holds(once.size() == read.size(), "no row is lost or added");
    Holds(Same(DecodeKsl(Store(once)), once), "rows come back");
    for (size_t i = 0; i < read.size(); ++i) {
        for (const RowField field : {RowText, SubTime, SubSize, SubFolder, SubFileName, SubFormats}) {
            Holds(once[i].fields[field] == read[i].fields[field], "a text comes back");
        }
        Holds(once[i].selected == read[i].selected, "the selection comes back");
    }
}

// What the records hold is there, whatever stands behind them.
void CheckRecordsHeld(const QByteArray& bytes, const std::vector<PlaylistRow>& held) {
    const std::vector<PlaylistRow> read = DecodeKsl(bytes);
    Holds(read.size() == held.size(), "no row is lost or added by what stands behind");
    for (size_t i = 0; i < held.size(); ++i) {
        for (const RowField field : {RowText, SubTime, SubSize, SubFolder, SubFileName, SubFormats}) {
            Holds(held[i].fields[field].isEmpty() || read[i].fields[field] == held[i].fields[field],
                  "a text of the records is kept");
        }
        Holds(read[i].selected == held[i].selected, "the selection is kept");
    }
}

// The input, once as it is and once as texts with the right sums, behind the records of a stored list.
void CheckBehind(const std::vector<PlaylistRow>& rows, const QByteArray& input) {
    const QByteArray stored = Store(rows);
    const std::vector<PlaylistRow> held = earlier::DecodeKsl(stored);
    Holds(held.size() == rows.size(), "an earlier reader finds all rows");
    CheckRecordsHeld(stored, held);
    const QByteArray records =
        stored.left(rows.empty() ? 59 : 1000 * static_cast<qsizetype>(rows.size()) + 994);
    CheckRecordsHeld(records + EncodeKslLongTexts({{}}, records.size()) + input, held);
    std::vector<KslLongText> texts = DecodeKslLongTexts(input, 0);
    for (KslLongText& text : texts) {
        text.row = rows.empty() ? text.row : text.row % static_cast<int>(rows.size() + 1);
        const QByteArray record = records.mid(qsizetype{1000} * text.row, 994);
        text.sum = record.size() == 994 ? KslTextSum(record, text.utf8) : text.sum;
    }
    CheckRecordsHeld(records + EncodeKslLongTexts(texts, records.size()), held);
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
    fuzz::CheckBehind(rows, bytes);
    fuzz::CheckRows(rows);
    return 0;
}
