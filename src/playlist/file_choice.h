// The file dialogs of the main window, and which files count as audio.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/user_prompts.h"

#include <QString>
#include <QStringList>

namespace kestrune {

inline const QString addFilesTitle = QStringLiteral("Add audio files");
inline const QString addForBurningTitle = QStringLiteral("Add audio files for burning");
inline const QString openPlaylistTitle = QStringLiteral("Open playlist");
inline const QString savePlaylistTitle = QStringLiteral("Save playlist");

// What came of a dialog. With several files `list` holds their full paths in the order of choice and the
// other two are empty; with one, `path` is its folder and `file` its name; all empty after a cancel.
struct ChosenFiles {
    QString path;
    QString file;
    QStringList list;
};

// What the dialog of a title offers. A title that is none of the four gets no filter.
FileChoice FileChoiceFor(const QString& title);

// Shows the dialog of the title, starting in the state's CurPath, and stores the new folder; a cancel stores
// nothing. Window thread.
ChosenFiles ShowFileDialog(const QString& title, ProgramState& state, Options& options, UserPrompts& prompts);

// True when the file exists and has one of the audio endings. Endings have three or four letters.
bool IsAudioFile(const QString& file);

} // namespace kestrune
