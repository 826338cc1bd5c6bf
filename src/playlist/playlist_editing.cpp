#include "playlist/playlist_editing.h"

#include "app/text_coding.h"
#include "playlist/playlist_text.h"

#include <array>

namespace kestrune {

namespace {

struct RecordField {
    RowField field;
    qsizetype characters;
};

constexpr qsizetype titleCharacters = 380;
constexpr std::array<RecordField, 6> recordFields = {
    {{SubTime, 20}, {SubType, 3}, {SubSize, 20}, {SubFolder, 200}, {SubFileName, 172}, {SubFormats, 197}}};

// What comes back of a value that was stored with the end mark behind it. A mark that found no room takes
// nothing with it.
QString ThroughField(const QString& value, qsizetype characters) {
    const QString held = FirstCharacters(value, characters);
    return held.contains(QLatin1String("//")) ? KillGang0(held) : held;
}

QString NumberedText(int number, const QString& title) {
    return QString::number(number) + u'.' + title;
}

} // namespace

PlaylistEditing::PlaylistEditing(ProgramState& state, PlaylistRows& rows, PlaylistFiles& files,
                                 UserPrompts& prompts, EditedPlayback playback, QObject* parent)
    : QObject(parent),
      state_(state),
      rows_(rows),
      files_(files),
      prompts_(prompts),
      playback_(std::move(playback)) {}

void PlaylistEditing::DelFilefromList() {
    if (prompts_.AskYesNo(tr("Delete selected files from Playlist?"), PromptIcon::Question)) {
        StopIfDeleted();
        rows_.RemoveSelected();
        rows_.Renumber();
        state_.CurIndex = std::min(state_.CurIndex, rows_.Count());
        emit TotalsChanged();
    }
    SaveDefault();
}

// PlayFile outlives its playback, so this may stop what has stopped already.
void PlaylistEditing::StopIfDeleted() {
    const QString playFile = playback_.PlayFile();
    for (int row = 1; row <= rows_.Count(); ++row) {
        if (rows_.IsSelected(row) && rows_.FullPath(row) == playFile) {
            playback_.StopPlay();
        }
    }
}

void PlaylistEditing::ListUpDown(bool up) {
    if (rows_.Count() == 0) {
        return;
    }
    const int rowToShow = up ? MoveUp() : MoveDown();
    if (rowToShow > 0) {
        emit RowShown(rowToShow);
    }
}

// Returns the row to show, 0 when nothing moved. A selected row can only find another one in its way if that
// one could not move itself.
int PlaylistEditing::MoveUp() {
    const PlaylistRows::HeldChanges held(rows_);
    int rowToShow = 0;
    for (int row = 2; row <= rows_.Count(); ++row) {
        if (!rows_.IsSelected(row)) {
            continue;
        }
        SwapListViewItem(row, row - 1);
        if (rowToShow == 0) {
            rowToShow = row < 3 ? row - 1 : row - 2;
        }
    }
    return rowToShow;
}

int PlaylistEditing::MoveDown() {
    const PlaylistRows::HeldChanges held(rows_);
    const int count = rows_.Count();
    int rowToShow = 0;
    for (int row = count - 1; row >= 1; --row) {
        if (!rows_.IsSelected(row)) {
            continue;
        }
        SwapListViewItem(row, row + 1);
        if (rowToShow == 0) {
            rowToShow = row < count - 2 ? row + 2 : row + 1;
        }
    }
    return rowToShow;
}

void PlaylistEditing::SwapListViewItem(int a, int b) {
    const auto isRow = [this](int row) { return row >= 1 && row <= rows_.Count(); };
    if (!isRow(a) || !isRow(b) || a == b) {
        return;
    }
    PlaylistRow record = rows_.Row(a);
    PlaylistRow other = rows_.Row(b);
    const QString title = ThroughField(KillTitleHead(record.fields[RowText]), titleCharacters);
    for (const RecordField& part : recordFields) {
        record.fields[part.field] = ThroughField(record.fields[part.field], part.characters);
    }
    record.fields[RowText] = NumberedText(b, title);
    other.fields[RowText] = NumberedText(a, KillTitleHead(other.fields[RowText]));
    std::swap(record.fields[SubSortKey], other.fields[SubSortKey]);
    const PlaylistRows::HeldChanges held(rows_);
    rows_.SetRow(a, other);
    rows_.SetRow(b, record);
    emit RowsSwapped(a, b);
}

void PlaylistEditing::ImageListCmd_Click(int index) {
    switch (static_cast<ListCommand>(index)) {
    case ListCommand::Add:
        files_.AddFilesByDialog();
        break;
    case ListCommand::Delete:
        if (rows_.Count() > 0) {
            DelFilefromList();
            emit NeighboursChanged();
            SaveDefault();
        }
        break;
    case ListCommand::Open:
        files_.OpenSavePlayList(QStringLiteral("OPEN"), false);
        break;
    case ListCommand::Save:
        if (rows_.Count() > 0) {
            files_.OpenSavePlayList(QStringLiteral("SAVE"), false);
        }
        break;
    case ListCommand::Up:
        ListUpDown(true);
        break;
    case ListCommand::Down:
        ListUpDown(false);
        break;
    default:
        break;
    }
}

void PlaylistEditing::DeleteKey() {
    DelFilefromList();
    SaveDefault();
}

void PlaylistEditing::SaveDefault() {
    files_.OpenSavePlayList(QStringLiteral("SAVE"), true);
}

} // namespace kestrune
