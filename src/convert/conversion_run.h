// The run of the converter: for every checked row the chain of formats, what Start and Stop do in the middle
// of it, and what the window shows of it.
#pragma once

#include "components/audio_file.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"
#include "convert/conversion_rows.h"
#include "convert/conversion_stages.h"
#include "convert/converter_state.h"
#include "convert/job_list.h"
#include "tool_window/event_log.h"

#include <QObject>
#include <QString>

namespace kestrune {

// Where ProgressConvert rests: a sliver of the bar, never nothing.
inline constexpr float restingProgress = 0.001F;

// What the run works with. All of it must outlive the run.
struct ConversionRunParts {
    ConverterState& state;
    JobList& jobs;
    ConversionRows& rows;
    KSTAudioFile2& inputFile;
    KSTAudioFile2& outputFile;
    UserPrompts& prompts;
    PendingEvents& pending;
    EventLog& log;
};

// Window thread. Image1_Click returns when the run is over. Events of the window run in the meantime, at the
// end of each block and while a message is shown, so that Stop, Start, the list and the settings may be
// used: handlers may be called again from within. A call that fails is passed over: the next one is made, and
// the failure goes to the logging category "kestrune.convert".
//
// The window must not be destroyed while IsRunning. To close it then, call Abandon and wait for RunEnded.
class ConversionRun : public QObject {
    Q_OBJECT
public:
    explicit ConversionRun(ConversionRunParts parts, QObject* parent = nullptr);

    // --- State of the controls ---
    bool IsImage1Visible() const { return image1Visible_; } // Start
    bool IsImage2Visible() const { return image2Visible_; } // Stop
    bool IsImageQuitEnabled() const { return idle_; }
    bool IsLabel11Visible() const { return !idle_; }
    // txtInputFile, ImageinPath, TextOutPath, ImageOutPath
    bool ArePathsEnabled() const { return idle_; }
    const QString& Label10(int index) const { return index == 0 ? currentFile_ : statusLine_; }
    const QString& Label11() const { return arrow_; }
    float ProgressConvert() const { return progressConvert_; } // 0 to 100
    int ProgressBar1() const { return progressBar_; }          // 0 to ProgressBar1Maximum
    int ProgressBar1Maximum() const { return progressBarMaximum_; }
    bool IsPointerBusy() const { return pointerBusy_; } // arrow and hourglass
    // A click on Start has not returned yet. After a Stop this may be so while Start shows and ImageQuit is
    // enabled.
    bool IsRunning() const { return runDepth_ > 0; }

    // --- What the user does ---
    void Image1_Click(); // Start
    void Image2_Click(); // Stop
    // After the user changed the box of a row: the status line starts anew, with the rows checked now.
    void ListViewInput_ItemCheck();
    // Ends all runs at the next block, without a question or a message, as closing the window does. No more
    // run starts after it.
    void Abandon();

    // --- Procedures ---
    // The whole chain of formats for a row, 1-based.
    void Converter(const QString& name, int row);
    // Copies one file into another in the format that OutputFile holds, until Converting is false.
    void ConvertFile(const QString& source, const QString& target);
    // One stage of the chain. Nothing happens while Converting is false.
    void RunStage(Stage stage);
    qint16 FindAllCheck() const { return parts_.rows.CheckedCount(); }
    void DispFile();
    // Idle or running, for all controls at once.
    void ActiveObj(bool idle);

signals:
    void ControlsChanged(); // what is visible and enabled, by the getters
    void Label10Shown(int index, const QString& text);
    void Label11Shown(const QString& text);
    void ProgressConvertShown(float value);
    // The bar is to be painted at once: no event runs before the next file.
    void ProgressBar1Shown(int value, int maximum);
    void PointerShown(bool busy);
    void RunEnded(); // the last click on Start returns

private:
    void Start();
    void ConvertRows();
    void EndRun();
    bool AskToSkip();
    void AskForNext();
    bool ExpectStages();
    void RunStages();
    bool TakeSourceFormat();
    void StepBack(const StageFacts& facts, const QString& written);
    void CopyBlocks();
    void SetLabel10(int index, const QString& text);
    void SetProgressConvert(float value);
    void SetProgressBar(int value, int maximum);
    void SetPointer(bool busy);

    ConversionRunParts parts_;
    bool image1Visible_ = true;
    bool image2Visible_ = false;
    bool idle_ = true;
    QString currentFile_;
    QString statusLine_;
    QString arrow_;
    float progressConvert_ = restingProgress;
    int progressBar_ = 0;
    int progressBarMaximum_ = 1;
    bool pointerBusy_ = false;
    int runDepth_ = 0;
    bool abandoned_ = false;
};

} // namespace kestrune
