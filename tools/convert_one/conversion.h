// What a run of the converter does for one source, without its window.
#pragma once

#include "output_choice.h"

#include <vector>

namespace kestrune {

struct ConversionOptions {
    bool whole = true;  // the flag by which both objects know that whole files are converted
    bool expect = true; // tell the writer all outputs before the first
    bool timed = false; // print the seconds of each output, and how long an event would have waited
};

// Writes all outputs, one after the other. Messages of failures go to standard error; the count of outputs
// that failed comes back.
int Convert(const QString& input, const std::vector<OutputChoice>& outputs, const ConversionOptions& options);

} // namespace kestrune
