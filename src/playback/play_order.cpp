#include "playback/play_order.h"

#include <vector>

namespace kestrune {

namespace {

int MoveSelection(const ProgramState& state, PlaylistRows& rows, int row) {
    rows.SetSelected(state.LastIndex, false);
    rows.SetSelected(row, true);
    return row;
}

int FirstSelected(const PlaylistRows& rows, int from, int to, int step) {
    for (int row = from; step > 0 ? row <= to : row >= to; row += step) {
        if (rows.IsSelected(row)) {
            return row;
        }
    }
    return 0;
}

} // namespace

int FindSel(const PlaylistRows& rows) {
    return rows.SelectedCount();
}

int FindFileRND(const ProgramState& state, PlaylistRows& rows, Clock& clock) {
    if (rows.Count() == 0) {
        return 0;
    }
    clock.Seed(static_cast<quint32>(clock.MsSinceMidnight() / 1000));
    const auto pick = [&clock](size_t count) {
        return static_cast<int>(clock.Random() * static_cast<double>(count));
    };
    if (FindSel(rows) <= 1) {
        return MoveSelection(state, rows, pick(static_cast<size_t>(rows.Count())) + 1);
    }
    std::vector<int> selected;
    for (int row = 1; row <= rows.Count(); ++row) {
        if (rows.IsSelected(row)) {
            selected.push_back(row);
        }
    }
    return selected[static_cast<size_t>(pick(selected.size()))];
}

int FindNextSel(ProgramState& state, PlaylistRows& rows, const Options& options, Clock& clock) {
    const int count = rows.Count();
    if (count == 0) {
        return 0;
    }
    if (state.LastIndex == 0) {
        state.LastIndex = state.CurIndex;
    }
    if (options.IsModeChecked(PlayMode::Shuffle)) {
        return FindFileRND(state, rows, clock);
    }
    if (FindSel(rows) < 2) {
        return MoveSelection(state, rows, state.LastIndex >= count ? 1 : state.LastIndex + 1);
    }
    const int behind = FirstSelected(rows, state.LastIndex + 1, count, 1);
    return behind > 0 ? behind : FirstSelected(rows, 1, count, 1);
}

int FindLastSel(ProgramState& state, PlaylistRows& rows, const Options& options, Clock& clock) {
    const int count = rows.Count();
    if (count == 0) {
        return 0;
    }
    if (state.LastIndex == 0) {
        state.LastIndex = state.CurIndex;
    }
    if (options.IsModeChecked(PlayMode::Shuffle)) {
        return FindFileRND(state, rows, clock);
    }
    if (FindSel(rows) < 2) {
        return MoveSelection(state, rows, state.LastIndex <= 1 ? count : state.LastIndex - 1);
    }
    const int before = FirstSelected(rows, std::min(state.LastIndex - 1, count), 1, -1);
    return before > 0 ? before : FirstSelected(rows, count, 1, -1);
}

} // namespace kestrune
