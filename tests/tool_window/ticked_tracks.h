// A list with ticks as a tool makes one: tracks with a length, and names that can be edited.
#pragma once

#include "tool_window/ticked_rows.h"

#include <vector>

namespace kestrune {

struct Track {
    QString name;
    QString length;
    bool ticked = false;
};

class TickedTracks : public TickedRows {
public:
    std::vector<Track> tracks;

    int Count() const override { return static_cast<int>(tracks.size()); }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return {};
        }
        return section == 0 ? QStringLiteral("Title") : QStringLiteral("Length");
    }

protected:
    bool IsTicked(int row) const override { return At(row).ticked; }
    void StoreTick(int row, bool ticked) override { At(row).ticked = ticked; }
    QString CellText(int row, int column) const override {
        return column == 0 ? At(row).name : At(row).length;
    }
    bool IsEditable(int /*row*/, int column) const override { return column == 0; }
    bool StoreText(int row, int /*column*/, const QString& text) override {
        if (text.isEmpty()) {
            return false;
        }
        At(row).name = text;
        return true;
    }

private:
    const Track& At(int row) const { return tracks[static_cast<size_t>(row - 1)]; }
    Track& At(int row) { return tracks[static_cast<size_t>(row - 1)]; }
};

} // namespace kestrune
