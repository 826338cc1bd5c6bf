// The thirteen output formats of the converter, in the order of a run: what each is called, writes, sets and
// logs. Tables and pure functions; the calls go to the objects that are passed in.
#pragma once

#include "components/audio_file.h"
#include "components/outcome.h"
#include "convert/converter_state.h"

#include <QString>
#include <array>
#include <optional>

namespace kestrune {

enum class Stage : int { ACM = 0, WMA, MP3, ADPCM, DSP, MP2, VOX, OGG, GSM, G726, G723, G721, ALAW };
inline constexpr int stageCount = 13;

// The single steps of a backward step, which changes formats and logs, and converts nothing.
enum class BackStep {
    None,
    Log,
    OutputPcm,   // OutputFile.SetFormatPCMFreq with the window's rate and channels, 16 bits
    InputRaw,    // InputFile.SetFormatRaw, A-law as the stage wrote it
    InputVox,    // InputFile.SetFormatVOX
    InputG726,   // InputFile.SetFormatG726
    InputG723,   // InputFile.SetFormatG723
    InputG721,   // InputFile.SetFormatG721
    OpenWritten, // InputFile.OpenRead of the file just written: if it fails, nothing follows
    CloseInput   // InputFile.CloseFile
};
inline constexpr size_t largestBackSteps = 4;

struct StageFacts {
    Stage stage;
    std::optional<OutputBox> box;                     // none: a template switches the stage on
    QString arrow;                                    // text of Label11
    QString logName;                                  // the format in the lines of the log
    bool isFormatSetBeforeLog;                        // the format call comes before the line of the start
    bool isFlagTestedBehind;                          // Stop and the like are looked for behind this stage
    std::array<BackStep, largestBackSteps> backSteps; // none: no backward step
};

// In the order of a run.
const std::array<StageFacts, stageCount>& Stages();

// Lines of the log.
QString StartLog(const StageFacts& facts);
QString StopLog(const StageFacts& facts);
QString BackLog(const StageFacts& facts);
bool HasWayBack(const StageFacts& facts);

// A stage runs when its box is ticked, that of the template when there is one.
bool IsStageTicked(const StageFacts& facts, const ConverterState& state);

// The format call of a stage. Ok for the three that make none: their encoder goes by the file's extension.
Outcome SetStageFormat(Stage stage, const ConverterState& state, AudioFormat& outputFile);

// One of the calls of a backward step; Ok for the steps that are none, and for OpenWritten, whose file only
// the run knows.
Outcome CallBackStep(BackStep step, const ConverterState& state, KSTAudioFile2& inputFile,
                     AudioFormat& outputFile);

// What stands before and behind the last point of a path; both stay as they are without one.
void GetFileHead(const QString& path, QString& head, QString& extension);

// The file that a stage writes: OutputHead, which is the head (GetFileHead) of the output folder with the
// input's name and is set for each input by ConversionRun::Converter, then the ending of the format, which
// for WMA holds the profile.
QString StageOutput(Stage stage, const ConverterState& state);

} // namespace kestrune
