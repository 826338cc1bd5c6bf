// The output formats by the words of a command line.
#pragma once

#include "components/audio_file.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace kestrune {

// One file to write.
struct OutputChoice {
    QString file;
    QString format; // a kind and its figures with colons between: "mp3:44100:128:2"
};

// One line for each kind, with its figures.
QStringList FormatHelp();
// Makes the format of the words the current one. NotSupported also for words that name none.
Outcome SetFormat(KSTAudioFile2& file, const QString& format);
// One of every kind in the order of the converter's run, but without a template, in the format that the
// converter's window starts with. The files stand in `folder` under the base name of `input`.
std::vector<OutputChoice> EveryKind(const QString& input, const QString& folder);

} // namespace kestrune
