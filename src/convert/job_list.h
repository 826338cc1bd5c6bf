// The left side of the converter: which files are to be converted, and where the results go.
#pragma once

#include "app/program_state.h"
#include "components/user_prompts.h"
#include "convert/conversion_rows.h"
#include "convert/converter_state.h"
#include "convert/folder_listing.h"
#include "convert/input_types.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace kestrune {

// What the paths show before a folder was chosen, and for a list that came from the playlist.
QString StartInputText();
QString StartOutputText();
QString FromPlaylistText();

// The paths that InputControlStat means; they may be joined.
enum PathBox { InputPathBox = 1, OutputPathBox = 2, BothPathBoxes = 3 };

// What a click on a picture box is to do, or only its picture is to be put in step.
enum class CheckAction { Click, Show };

enum class ConPathAction { Get, Save };

// What the job list works with. All of it must outlive the list.
struct JobListParts {
    ProgramState& program; // AppPath and ConvertMode
    ConverterState& state;
    const PlaylistRows& playlist;
    ConversionRows& rows;
    UserPrompts& prompts;
    FolderLister listFolder = ListFolder;
};

// Window thread. Nothing of it reports an error but the messages that it shows through UserPrompts; what
// fails goes to the logging category "kestrune.convert".
//
// The two texts live here. The window forwards what the user types to txtInputFile_Change and
// TextOutPath_Change, and shows what InputTextShown and OutputTextShown say; a text that is already there
// raises nothing, so that the two may be joined to the same line edit.
class JobList : public QObject {
    Q_OBJECT
public:
    explicit JobList(JobListParts parts, QObject* parent = nullptr);

    // --- State ---
    const QString& txtInputFile() const { return inputText_; }
    const QString& TextOutPath() const { return outputText_; }
    const QString& LabelIn() const { return labelIn_; }
    const QString& LabelOut() const { return labelOut_; }
    bool IsInputReadOnly() const { return inputReadOnly_; }
    // The text box has the background 240, 240, 240. It keeps it when the box may be edited again.
    bool IsInputGrey() const { return inputGrey_; }
    // A path is shown by its label, or else by its text box. `box` is one of the two.
    bool IsLabelShown(PathBox box) const { return (labelsShown_ & box) != 0; }
    // Folder of FileList, without a separator at its end; empty before the first one.
    const QString& FileListPath() const { return fileListPath_; }
    const QString& ToolTip() const { return toolTip_; } // of ListViewInput
    const InputTypes& Types() const { return types_; }
    // Tag of a picture box of ImageCheckIn, "0" or "1".
    QString CheckInTag(int index) const;

    // --- Procedures ---
    // The left side's share of the window's load. ConverterState::Loading stands during it.
    void Load();
    // Rebuilds the list from the folder of FileList; no row is checked.
    void AddFile();
    // Fills the list from the playlist as ConvertMode says: 0 none, 2 selected rows, 3 the others, 4 all.
    void AddFilefromPayList();
    // Reads or writes ConPath.dat. A write that a read gives rise to (its input text lists the folder, which
    // stores the paths) waits for the end of the read: before it, half of the texts are still old ones.
    void SaveGetConPath(ConPathAction action);
    void InputControlStat(bool showLabels, PathBox which);
    void SetCheckIn(int index, CheckAction action);

    // --- What the user does ---
    void txtInputFile_Change(const QString& text);
    void TextOutPath_Change(const QString& text);
    void ImageinPath_Click();
    void ImageOutPath_Click();
    void LabelIn_Click() { InputControlStat(false, InputPathBox); }
    void LabelOut_Click() { InputControlStat(false, OutputPathBox); }
    // Over the window itself, `y` in device-independent pixels from its top.
    void Form_MouseMove(int y);
    void Checkin_Click(int index, bool ticked);
    void ListViewInput_Click(int row); // 1-based
    void ListViewInput_DblClick();
    // Full paths in the order of the drop.
    void ListViewInput_Drop(const QStringList& paths);
    void ImageAllClear_Click(int index); // 0 checks all rows, 1 none

signals:
    void InputTextShown(const QString& text);
    void OutputTextShown(const QString& text);
    void LabelInShown(const QString& text);
    void LabelOutShown(const QString& text);
    void InputLookChanged(); // IsInputReadOnly, IsInputGrey
    // By IsLabelShown. The text box of each path in `focused` (joined PathBox values, or 0) takes the focus.
    void PathDisplayChanged(int focused);
    void LabelColoursReset();                  // both, to the colour of button text
    void CheckInShown(int index, bool ticked); // picture box and real box
    void ToolTipShown(const QString& text);    // of ListViewInput

private:
    bool IsFolderMode() const { return parts_.program.ConvertMode == 0; }
    void SetInputText(const QString& text);
    void SetOutputText(const QString& text);
    void SetLabelIn(const QString& text);
    void InputFolderChanged();
    void SetInputLook(bool readOnly, bool grey);
    void GetConPath();
    void SaveConPath();
    void FillFrom(const QStringList& names);
    void AppendRows(std::vector<ConversionRow>& rows, const QString& folder, const QString& name,
                    bool checked) const;

    JobListParts parts_;
    InputTypes types_;
    QString inputText_ = StartInputText();
    QString outputText_ = StartOutputText();
    QString labelIn_ = StartInputText();
    QString labelOut_ = StartOutputText();
    QString fileListPath_;
    QString toolTip_;
    bool inputReadOnly_ = false;
    bool inputGrey_ = false;
    int labelsShown_ = BothPathBoxes;
    bool isReadingConPath_ = false;
    bool saveWanted_ = false;
};

} // namespace kestrune
