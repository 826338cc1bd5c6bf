#include "convert/job_list.h"

#include "app/failure_log.h"
#include "app/paths.h"
#include "app/safe_file.h"
#include "app/text_coding.h"
#include "convert/con_path.h"
#include "playlist/playlist_text.h"

#include <QDir>
#include <limits>

namespace kestrune {

namespace {

// Playlist rows by ConvertMode.
constexpr quint8 modeSelected = 2;
constexpr quint8 modeUnselected = 3;
constexpr quint8 modeAll = 4;

// The band of the window in which a text box stays open, first and last line.
constexpr int bandTop = 40;
constexpr int bandBottom = 66;

constexpr qsizetype largestStoredText = 0xFFFF;

// As a file list box gives its folder: absolute, without a separator at its end.
QString FileListFolder(const QString& text) {
    QString folder = QDir::isRelativePath(text) ? QDir::currentPath() + pathSeparator + text : text;
    while (folder.size() > 1 && folder.endsWith(pathSeparator)) {
        folder.chop(1);
    }
    return folder;
}

bool IsRowWanted(quint8 mode, bool isSelected) {
    return (mode == modeSelected && isSelected) || (mode == modeUnselected && !isSelected) || mode == modeAll;
}

// Where a folder browser opens: at the folder of the box if there is one.
QString BrowserStart(const QString& text) {
    return QDir(text).exists() && !text.isEmpty() ? text : QString();
}

// What the record holds of a path that was never chosen is the same in every language.
constexpr const char* startInput = QT_TRANSLATE_NOOP("kestrune::JobList", "Enter Input Directory");
constexpr const char* startOutput = QT_TRANSLATE_NOOP("kestrune::JobList", "Enter Output Directory");

QString TextOfRecord(const QByteArray& bytes) {
    for (const char* start : {startInput, startOutput}) {
        if (bytes == start) {
            return JobList::tr(start);
        }
    }
    return DecodeText(bytes);
}

QByteArray RecordOfText(const QString& text) {
    for (const char* start : {startInput, startOutput}) {
        if (text == JobList::tr(start)) {
            return start;
        }
    }
    return EncodeUpTo(text, largestStoredText);
}

} // namespace

QString StartInputText() {
    return JobList::tr(startInput);
}

QString StartOutputText() {
    return JobList::tr(startOutput);
}

QString FromPlaylistText() {
    return JobList::tr("From Playlist");
}

JobList::JobList(JobListParts parts, QObject* parent) : QObject(parent), parts_(std::move(parts)) {}

QString JobList::CheckInTag(int index) const {
    return types_.IsTicked(index) ? QStringLiteral("1") : QStringLiteral("0");
}

void JobList::Load() {
    SaveGetConPath(ConPathAction::Get);
    AddFilefromPayList();
}

void JobList::AddFile() {
    FillFrom(parts_.listFolder(fileListPath_));
}

void JobList::FillFrom(const QStringList& names) {
    std::vector<ConversionRow> rows;
    for (const QString& name : names) {
        AppendRows(rows, fileListPath_, name, false);
    }
    parts_.rows.Replace(std::move(rows));
    SaveGetConPath(ConPathAction::Save);
}

void JobList::AppendRows(std::vector<ConversionRow>& rows, const QString& folder, const QString& name,
                         bool checked) const {
    const int count = types_.RowsFor(name);
    if (count == 0) {
        return;
    }
    const QString sizeText = FileSizeText(WithSeparator(folder) + name);
    rows.insert(rows.end(), static_cast<size_t>(count), {name, sizeText, folder, checked});
}

void JobList::AddFilefromPayList() {
    if (IsFolderMode()) {
        SetInputLook(false, inputGrey_);
        return;
    }
    SetInputLook(true, true);
    std::vector<ConversionRow> rows;
    for (int row = 1; row <= parts_.playlist.Count(); ++row) {
        if (!IsRowWanted(parts_.program.ConvertMode, parts_.playlist.IsSelected(row))) {
            continue;
        }
        const QString folder = parts_.playlist.Field(row, SubFolder);
        const QString name = parts_.playlist.Field(row, SubFileName);
        if (FileExists(folder + name)) {
            AppendRows(rows, folder, name, true);
        } else {
            parts_.prompts.Message(tr("[%1] no longer exists!").arg(folder + name), PromptIcon::None);
        }
    }
    parts_.rows.Append(std::move(rows));
}

void JobList::SaveGetConPath(ConPathAction action) {
    if (action == ConPathAction::Get) {
        GetConPath();
    } else if (isReadingConPath_) {
        saveWanted_ = true;
    } else {
        SaveConPath();
    }
}

void JobList::GetConPath() {
    const QString path = ConPathFile(parts_.program.AppPath);
    if (!FileExists(path)) {
        return;
    }
    const ConPathRecord record = DecodeConPath(ReadWholeFile(path));
    isReadingConPath_ = true;
    if (IsFolderMode()) {
        SetInputText(TextOfRecord(record.inputFolder));
    } else {
        SetInputText(FromPlaylistText());
        SetLabelIn(FromPlaylistText());
    }
    SetOutputText(TextOfRecord(record.outputFolder));
    isReadingConPath_ = false;
    if (saveWanted_) {
        saveWanted_ = false;
        SaveConPath();
    }
}

void JobList::SaveConPath() {
    const QString path = ConPathFile(parts_.program.AppPath);
    const QByteArray oldBytes = ReadWholeFile(path);
    ConPathRecord record = DecodeConPath(oldBytes);
    if (IsFolderMode()) {
        record.inputFolder = RecordOfText(inputText_);
    }
    record.outputFolder = RecordOfText(outputText_);
    const QByteArray bytes = EncodeConPath(record, oldBytes);
    if (bytes != oldBytes && !ReplaceFile(path, bytes)) {
        PassOver(logConvert, Outcome::WriteFailed, "storing the paths", path);
    }
}

void JobList::InputControlStat(bool showLabels, PathBox which) {
    labelsShown_ = showLabels ? labelsShown_ | which : labelsShown_ & ~static_cast<int>(which);
    emit PathDisplayChanged(showLabels ? 0 : which);
    emit LabelColoursReset();
}

void JobList::SetCheckIn(int index, CheckAction action) {
    if (action == CheckAction::Click) {
        Checkin_Click(index, !types_.IsTicked(index));
    } else {
        emit CheckInShown(index, types_.IsTicked(index));
    }
}

void JobList::SetInputText(const QString& text) {
    if (text == inputText_) {
        return;
    }
    inputText_ = text;
    emit InputTextShown(text);
    InputFolderChanged();
}

void JobList::SetOutputText(const QString& text) {
    if (text == outputText_) {
        return;
    }
    TextOutPath_Change(text);
    emit OutputTextShown(text);
}

void JobList::SetLabelIn(const QString& text) {
    labelIn_ = text;
    emit LabelInShown(text);
}

void JobList::SetInputLook(bool readOnly, bool grey) {
    inputReadOnly_ = readOnly;
    inputGrey_ = grey;
    emit InputLookChanged();
}

void JobList::InputFolderChanged() {
    if (!IsFolderMode()) {
        return;
    }
    if (outputText_ == StartOutputText()) {
        SetOutputText(inputText_);
    }
    const QStringList names = parts_.listFolder(inputText_);
    if (names.isEmpty()) {
        parts_.rows.Clear();
        return;
    }
    fileListPath_ = FileListFolder(inputText_);
    SetLabelIn(inputText_);
    FillFrom(names);
}

void JobList::txtInputFile_Change(const QString& text) {
    if (text == inputText_) {
        return;
    }
    inputText_ = text;
    InputFolderChanged();
}

void JobList::TextOutPath_Change(const QString& text) {
    outputText_ = text;
    labelOut_ = text;
    emit LabelOutShown(text);
}

void JobList::ImageinPath_Click() {
    InputControlStat(true, BothPathBoxes);
    const QString folder = parts_.prompts.ChooseFolder(tr("Get Intput Directory"), BrowserStart(inputText_));
    if (folder.isEmpty()) {
        return;
    }
    parts_.program.ConvertMode = 0;
    SetInputLook(false, inputGrey_);
    if (folder == inputText_) {
        InputFolderChanged();
    } else {
        SetInputText(folder);
    }
}

void JobList::ImageOutPath_Click() {
    InputControlStat(true, BothPathBoxes);
    QString folder = parts_.prompts.ChooseFolder(tr("Get Output Directory"), BrowserStart(outputText_));
    if (folder.mid(1) == QStringLiteral(":")) {
        folder.append(pathSeparator);
    }
    if (!folder.isEmpty()) {
        SetOutputText(folder);
    }
}

void JobList::Form_MouseMove(int y) {
    if (y < bandTop || y > bandBottom) {
        InputControlStat(true, BothPathBoxes);
    }
}

void JobList::Checkin_Click(int index, bool ticked) {
    if (index < 0 || index >= inputTypeCount) {
        return;
    }
    types_.SetTicked(index, ticked);
    emit CheckInShown(index, ticked);
    if (!parts_.state.Loading) {
        AddFile();
    }
}

void JobList::ListViewInput_Click(int row) {
    if (row < 1 || row > parts_.rows.Count() || row > std::numeric_limits<qint16>::max()) {
        return;
    }
    toolTip_ = parts_.rows.FullPath(row);
    emit ToolTipShown(toolTip_);
    parts_.state.ClickedRow = static_cast<qint16>(row);
}

void JobList::ListViewInput_DblClick() {
    const int row = parts_.state.ClickedRow;
    if (row < 1 || row > parts_.rows.Count()) {
        return;
    }
    const Qt::CheckState inverted = parts_.rows.IsChecked(row) ? Qt::Unchecked : Qt::Checked;
    parts_.rows.setData(parts_.rows.index(row - 1, ColumnName), inverted, Qt::CheckStateRole);
}

void JobList::ListViewInput_Drop(const QStringList& paths) {
    std::vector<ConversionRow> rows;
    for (const QString& path : paths) {
        QString folder;
        QString name;
        SplitPath(path, folder, name);
        AppendRows(rows, folder, name, false);
    }
    parts_.rows.Append(std::move(rows));
}

void JobList::ImageAllClear_Click(int index) {
    if (index == 0 || index == 1) {
        parts_.rows.SetAllChecked(index == 0);
    }
}

} // namespace kestrune
