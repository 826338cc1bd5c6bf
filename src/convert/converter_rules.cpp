#include "convert/converter_rules.h"

namespace kestrune {

ConverterRules::ConverterRules(ProgramState& program, const PlaylistRows& playlist, KSTAudioFile2& inputFile,
                               KSTAudioFile2& outputFile, UserPrompts& prompts, PendingEvents& pending,
                               Clock& clock)
    : Events(clock),
      Jobs({program, State, playlist, Rows, prompts}),
      Settings({State, inputFile, outputFile, prompts, Events}),
      Run({State, Jobs, Rows, inputFile, outputFile, prompts, pending, Events}) {
    QObject::connect(&Rows, &ConversionRows::RowCheckChanged, &Run, &ConversionRun::ListViewInput_ItemCheck);
}

void ConverterRules::Load() {
    State.Loading = true;
    // The formats first: a message about a file that is gone lets events run, which then find all in place.
    Settings.Load();
    Jobs.Load();
    State.Loading = false;
}

} // namespace kestrune
