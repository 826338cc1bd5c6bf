// The file dialogs of the main window, and which files count as audio.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/user_prompts.h"

#include <QString>
#include <QStringList>
#include <initializer_list>

namespace kestrune {

enum class FileDialog { AddFiles, AddForBurning, OpenPlaylist, SavePlaylist };

// An entry of a filter. The label is in English, marked for the context "kestrune::FileChoice", and is shown
// in the user's language; patterns are parted by semicolons.
struct FilterEntry {
    const char* label;
    const char* patterns;
};

// As FileChoice takes it.
QString FilterText(std::initializer_list<FilterEntry> entries);

// What came of a dialog. With several files `list` holds their full paths in the order of choice and the
// other two are empty; with one, `path` is its folder and `file` its name; all empty after a cancel.
struct ChosenFiles {
    QString path;
    QString file;
    QStringList list;
};

// What a dialog offers.
FileChoice FileChoiceFor(FileDialog dialog);

// Shows a dialog, starting in the state's CurPath, and stores the new folder; a cancel stores
// nothing. Window thread.
ChosenFiles ShowFileDialog(FileDialog dialog, ProgramState& state, Options& options, UserPrompts& prompts);

// True when the file exists and has one of the audio endings. Endings have three or four letters.
bool IsAudioFile(const QString& file);

} // namespace kestrune
