// The rules of the converter over components of its own.
#pragma once

#include "convert/converter_rules.h"
#include "program/components.h"

#include <memory>

namespace kestrune {

// One for each opening of the converter; what it is shown by comes and goes before it. Tests use the same
// over other components. What is passed in must outlive it. Window thread.
class ConverterTool {
public:
    ConverterTool(Components& components, ProgramState& state, const PlaylistRows& rows)
        : outputFile(components.MakeAudioFile()),
          inputFile(components.MakeAudioFile()),
          rules(state, rows, *inputFile, *outputFile, components.Prompts(), components.Events(),
                components.Time()) {}

    const std::unique_ptr<KSTAudioFile2> outputFile;
    const std::unique_ptr<KSTAudioFile2> inputFile;
    ConverterRules rules;
};

} // namespace kestrune
