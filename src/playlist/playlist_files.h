// Opening and saving the playlist, and the ways in which files reach it.
#pragma once

#include "app/options.h"
#include "app/program_state.h"
#include "components/user_prompts.h"
#include "playlist/admission.h"
#include "playlist/text_playlists.h"

#include <QObject>
#include <QSet>
#include <QStringList>

namespace kestrune {

// Window thread. A failing file operation shows nothing; a playlist that cannot be read gives no rows, and
// one that cannot be written leaves the file as it was. A native playlist of an older build or of another
// program that is stored anew stays beside it, its name ending in ".ksl.old"; once, so the oldest is the one
// that is kept.
class PlaylistFiles : public QObject, public ListReader {
    Q_OBJECT
public:
    PlaylistFiles(ProgramState& state, Options& options, PlaylistRows& rows, Admission& admission,
                  UserPrompts& prompts, QObject* parent = nullptr);

    // operation "OPEN" or "SAVE"; with useDefaultFile the file is "Default.ksl" of the program's folder, else
    // a dialog asks for it. An opened list replaces the rows.
    void OpenSavePlayList(const QString& operation, bool useDefaultFile);

    // One format each. clearFirst: a load replaces the rows; without it the entries are appended. A load of a
    // text format is followed by a save of the default playlist.
    void OpenSaveMyPlaylistKSL(const QString& path, const QString& operation, bool clearFirst);
    void OpenSaveWinaimM3U(const QString& path, const QString& operation, bool clearFirst);
    void OpenSaveWinaimPls(const QString& path, const QString& operation, bool clearFirst);
    void OpenSaveMediaPlayerWAX(const QString& path, const QString& operation, bool clearFirst);

    // ListReader: chooses the format by the ending.
    void AppendList(const QString& path) override;

    // The "Add audio files" button.
    void AddFilesByDialog();
    // Files dropped on the list, as full paths.
    void AddDroppedFiles(const QStringList& files);

signals:
    void WindowRepaint();
    void TotalsChanged();
    void ListLoaded();        // the transport's buttons are to be set
    void FilesAdded();        // "Add audio files" is through: enable Play
    void NeighboursChanged(); // Previous and Next are to be set

private:
    bool Dispatch(const QString& path, const QString& operation, bool clearFirst);
    void Open(const QString& path);
    void Save(const QString& path, bool isDefault);
    void AddTextEntries(const ParsedList& list, const QString& path, bool clearFirst);
    void AddAsxEntry(const ListEntry& entry, const QString& baseFolder);
    void SaveKsl(const QString& path);
    void SaveDefault();

    ProgramState& state_;
    Options& options_;
    PlaylistRows& rows_;
    Admission& admission_;
    UserPrompts& prompts_;
    QSet<QString> ownLists_; // paths of the native playlists that were stored here
    QStringList openLists_;  // canonical paths of the playlists that are being read, outermost first
};

} // namespace kestrune
