#include "convert/conversion_run.h"

#include "app/failure_log.h"
#include "app/paths.h"
#include "convert/output_folder.h"
#include "playlist/playlist_text.h"

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr int largestRow = std::numeric_limits<qint16>::max();

qint16 OneMore(qint16 count) {
    return static_cast<qint16>(std::min(count + 1, largestRow));
}

QString StatusText(int created, int converted, int total) {
    const bool one = created < 2;
    const QString text = converted < 2
                             ? (one ? ConversionRun::tr("%1 File Created/%2 File Converted(Total %3)")
                                    : ConversionRun::tr("%1 Files Created/%2 File Converted(Total %3)"))
                             : (one ? ConversionRun::tr("%1 File Created/%2 Files Converted(Total %3)")
                                    : ConversionRun::tr("%1 Files Created/%2 Files Converted(Total %3)"));
    return text.arg(created).arg(converted).arg(total);
}

} // namespace

ConversionRun::ConversionRun(ConversionRunParts parts, QObject* parent) : QObject(parent), parts_(parts) {}

// --- What the user does ---

void ConversionRun::Image1_Click() {
    if (abandoned_) {
        return;
    }
    ++runDepth_;
    // What the steps back set is not for the rows that follow: equal ones give equal files.
    parts_.inputFile.HoldInputFormats(true);
    Start();
    --runDepth_;
    if (runDepth_ == 0) {
        parts_.inputFile.HoldInputFormats(false);
        // Nothing is read again: what was kept for that is let go.
        parts_.inputFile.SetFlag(KSTAudioFile2::wholeFiles);
        emit RunEnded();
    }
}

void ConversionRun::Start() {
    ConverterState& state = parts_.state;
    state.StopBatch = false;
    state.SkipCurrent = false;
    if (state.Converting) {
        if (AskToSkip()) {
            AskForNext();
        }
        EndRun();
        return;
    }
    state.FilesTotal = FindAllCheck();
    if (state.FilesTotal == 0) {
        parts_.prompts.Message(tr("No file selected!"), PromptIcon::Warning);
        return;
    }
    const QString& outputFolder = parts_.jobs.TextOutPath();
    if (outputFolder.isEmpty() || !IsOutputFolderValid(WithSeparator(outputFolder))) {
        parts_.prompts.Message(tr("Invalid output directory!"), PromptIcon::Warning);
        return;
    }
    parts_.jobs.SaveGetConPath(ConPathAction::Save);
    state.FilesCreated = 0;
    state.FilesConverted = 0;
    ActiveObj(false);
    DispFile();
    SetProgressBar(0, state.FilesTotal);
    ConvertRows();
    EndRun();
}

// The box of a row, and the list itself, may change while an earlier row is converted: each row is looked at
// when its turn comes.
void ConversionRun::ConvertRows() {
    ConverterState& state = parts_.state;
    int handled = 0;
    for (int row = 1; row <= std::min(parts_.rows.Count(), largestRow); ++row) {
        if (!parts_.rows.IsChecked(row)) {
            continue;
        }
        const QString name = parts_.rows.Row(row).name;
        SetLabel10(0, tr("Current File: %1").arg(name));
        Converter(name, row);
        ++handled;
        SetProgressBar(handled, progressBarMaximum_);
        state.FilesConverted = static_cast<qint16>(handled);
        DispFile();
        if (state.StopBatch || abandoned_) {
            break;
        }
    }
}

void ConversionRun::EndRun() {
    parts_.state.StopBatch = false;
    parts_.state.SkipCurrent = false;
    ActiveObj(true);
    parts_.state.Converting = false;
    if (!abandoned_) {
        parts_.prompts.Message(tr("Done!"), PromptIcon::Warning);
    }
}

void ConversionRun::Image2_Click() {
    ConverterState& state = parts_.state;
    if (AskToSkip() && FindAllCheck() > 1) {
        AskForNext();
    }
    // Whatever was answered, the file that is being written ends here.
    state.SkipCurrent = false;
    ActiveObj(true);
    state.Converting = false;
}

bool ConversionRun::AskToSkip() {
    if (!parts_.prompts.AskYesNo(tr("Do you want to skip current file?"), PromptIcon::Warning)) {
        return false;
    }
    parts_.state.SkipCurrent = true;
    SetProgressConvert(0);
    parts_.state.Converting = false;
    return true;
}

void ConversionRun::AskForNext() {
    if (!parts_.prompts.AskYesNo(tr("Do you want to convert the next file?"), PromptIcon::Warning)) {
        parts_.state.StopBatch = true;
    }
}

void ConversionRun::ListViewInput_ItemCheck() {
    if (!parts_.state.Loading) {
        SetLabel10(1, StatusText(0, 0, FindAllCheck()));
    }
}

void ConversionRun::Abandon() {
    abandoned_ = true;
    parts_.state.Converting = false;
}

// --- A row ---

void ConversionRun::Converter(const QString& name, int row) {
    ConverterState& state = parts_.state;
    if (state.SkipCurrent || state.StopBatch) {
        SetProgressConvert(0);
        state.Converting = false;
        state.SkipCurrent = false;
        return;
    }
    state.InputPath = WithSeparator(parts_.rows.Row(row).folder) + name;
    if (!FileExists(state.InputPath) || !name.contains(u'.')) {
        parts_.prompts.Message(tr("Invalid input file name: %1").arg(state.InputPath), PromptIcon::Critical);
        return;
    }
    QString extension;
    GetFileHead(WithSeparator(parts_.jobs.TextOutPath()) + name, state.OutputHead, extension);
    state.Converting = true;
    const bool areExpected = ExpectStages();
    RunStages();
    if (areExpected) {
        parts_.outputFile.ForgetExpectedOutputs();
    }
    state.Converting = false;
}

// Names what is about to be written to OutputFile, which may then code several files from one reading. False
// when there is only one.
bool ConversionRun::ExpectStages() {
    const ConverterState& state = parts_.state;
    const auto& stages = Stages();
    const auto ticked = std::count_if(stages.begin(), stages.end(), [&state](const StageFacts& facts) {
        return IsStageTicked(facts, state);
    });
    parts_.inputFile.SetFlag(ticked < 2 ? KSTAudioFile2::wholeFiles : KSTAudioFile2::wholeFilesAgain);
    if (ticked < 2) {
        return false;
    }
    parts_.outputFile.ForgetExpectedOutputs();
    for (const StageFacts& facts : stages) {
        if (IsStageTicked(facts, state) &&
            SetStageFormat(facts.stage, state, parts_.outputFile) == Outcome::Ok) {
            parts_.outputFile.ExpectOutput(StageOutput(facts.stage, state));
        }
    }
    return true;
}

void ConversionRun::RunStages() {
    ConverterState& state = parts_.state;
    for (const StageFacts& facts : Stages()) {
        if (!IsStageTicked(facts, state)) {
            continue;
        }
        arrow_ = facts.arrow;
        emit Label11Shown(arrow_);
        RunStage(facts.stage);
        state.FilesCreated = OneMore(state.FilesCreated);
        DispFile();
        if (facts.isFlagTestedBehind && (state.SkipCurrent || state.StopBatch)) {
            break;
        }
    }
}

// --- A stage ---

void ConversionRun::RunStage(Stage stage) {
    const ConverterState& state = parts_.state;
    if (!state.Converting) {
        return;
    }
    const StageFacts& facts = Stages()[static_cast<size_t>(stage)];
    const auto setFormat = [&] {
        PassOver(logConvert, SetStageFormat(stage, state, parts_.outputFile), "the format call of",
                 facts.arrow);
    };
    if (facts.isFormatSetBeforeLog) {
        setFormat();
    }
    parts_.log.AddEvent(StartLog(facts), EventIcon::RunStep);
    if (stage == Stage::WMA && !TakeSourceFormat()) {
        return;
    }
    if (!facts.isFormatSetBeforeLog) {
        setFormat();
    }
    const QString written = StageOutput(stage, state);
    ConvertFile(state.InputPath, written);
    parts_.log.AddEvent(StopLog(facts), EventIcon::RunStep);
    if (state.Converting && state.BackwardTransform != 0 && HasWayBack(facts)) {
        StepBack(facts, written);
    }
}

// The encoder of this stage is to know its source before its format is set.
bool ConversionRun::TakeSourceFormat() {
    KSTAudioFile2& input = parts_.inputFile;
    PassOver(logConvert, input.OpenRead(parts_.state.InputPath, 0, 1), "OpenRead", parts_.state.InputPath);
    if (input.GetFormatId() < 0) {
        return false;
    }
    const qint32 waveFormat = input.GetWaveFormat();
    const qint32 channels = input.GetChannels();
    parts_.outputFile.SetSourceFormat(waveFormat, channels);
    PassOver(logConvert, input.CloseFile(), "CloseFile", parts_.state.InputPath);
    return true;
}

void ConversionRun::StepBack(const StageFacts& facts, const QString& written) {
    const ConverterState& state = parts_.state;
    KSTAudioFile2& input = parts_.inputFile;
    for (const BackStep step : facts.backSteps) {
        if (step == BackStep::Log) {
            parts_.log.AddEvent(BackLog(facts), EventIcon::RunStep);
        } else if (step == BackStep::OpenWritten) {
            PassOver(logConvert, input.OpenRead(written, 0, 1), "OpenRead", written);
            if (input.GetFormatId() < 0) {
                return;
            }
        } else {
            PassOver(logConvert, CallBackStep(step, state, input, parts_.outputFile), "a backward step of",
                     facts.arrow);
        }
    }
}

// --- The copy ---

void ConversionRun::ConvertFile(const QString& source, const QString& target) {
    KSTAudioFile2& input = parts_.inputFile;
    KSTAudioFile2& output = parts_.outputFile;
    SetPointer(true);
    SetProgressConvert(restingProgress);
    PassOver(logConvert, input.OpenRead(source, 0, 1), "OpenRead", source);
    if (input.GetFormatId() >= 0) {
        PassOver(logConvert, output.Create(target, 0), "Create", target);
        if (output.GetFormatId() >= 0) {
            output.SetSourceFormat(input.GetWaveFormat(), input.GetChannels());
            CopyBlocks();
            SetProgressConvert(100);
            PassOver(logConvert, output.CloseFile(), "CloseFile", target);
        }
    }
    PassOver(logConvert, input.CloseFile(), "CloseFile", source);
    SetPointer(false);
    SetProgressConvert(restingProgress);
}

void ConversionRun::CopyBlocks() {
    KSTAudioFile2& input = parts_.inputFile;
    const qint64 blockSize = qint64{input.GetChannels()} * input.GetWaveFormat();
    double total = 0;
    do {
        const QByteArray block = input.ReadBlock(blockSize);
        if (block.isEmpty()) {
            break;
        }
        PassOver(logConvert, parts_.outputFile.WriteBlock(block), "WriteBlock");
        const qint32 divisor = input.BlockDivisor();
        const auto length = static_cast<double>(input.GetLengthBytes());
        // A length that is not known leaves the bar where it is.
        if (divisor > 0 && length > 0) {
            total = std::min(total + static_cast<double>(block.size()) / divisor, length);
            SetProgressConvert(static_cast<float>(total * 100 / length));
        }
        parts_.pending.Run();
    } while (parts_.state.Converting);
}

// --- What the window shows ---

void ConversionRun::DispFile() {
    const ConverterState& state = parts_.state;
    SetLabel10(1, StatusText(state.FilesCreated, state.FilesConverted, state.FilesTotal));
}

void ConversionRun::ActiveObj(bool idle) {
    idle_ = idle;
    image1Visible_ = idle;
    image2Visible_ = !idle;
    emit ControlsChanged();
}

void ConversionRun::SetLabel10(int index, const QString& text) {
    (index == 0 ? currentFile_ : statusLine_) = text;
    emit Label10Shown(index, text);
}

void ConversionRun::SetProgressConvert(float value) {
    progressConvert_ = value;
    emit ProgressConvertShown(value);
}

void ConversionRun::SetProgressBar(int value, int maximum) {
    progressBarMaximum_ = maximum;
    progressBar_ = std::min(value, maximum);
    emit ProgressBar1Shown(progressBar_, progressBarMaximum_);
}

void ConversionRun::SetPointer(bool busy) {
    pointerBusy_ = busy;
    emit PointerShown(busy);
}

} // namespace kestrune
