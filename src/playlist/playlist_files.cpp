#include "playlist/playlist_files.h"

#include "app/failure_log.h"
#include "app/paths.h"
#include "app/safe_file.h"
#include "playlist/file_choice.h"
#include "playlist/ksl_format.h"
#include "playlist/playlist_text.h"

#include <QFile>
#include <QFileInfo>

namespace kestrune {

namespace {

const QLatin1String saveOperation("SAVE");
const QLatin1String openOperation("OPEN");

// A list that grows by entries is saved after each of the first ones, then each time it has grown by an
// eighth, so that a long list is not written once for each of its rows.
bool IsSaveDue(int rowCount, int rowsAtSave) {
    constexpr int smallList = 64;
    return rowCount <= smallList || rowCount - rowsAtSave >= rowCount / 8;
}

} // namespace

PlaylistFiles::PlaylistFiles(ProgramState& state, Options& options, PlaylistRows& rows, Admission& admission,
                             UserPrompts& prompts, QObject* parent)
    : QObject(parent),
      state_(state),
      options_(options),
      rows_(rows),
      admission_(admission),
      prompts_(prompts) {
    admission_.SetListReader(this);
}

void PlaylistFiles::OpenSavePlayList(const QString& operation, bool useDefaultFile) {
    const bool save = operation == saveOperation;
    if (useDefaultFile) {
        const QString file = OwnFile(state_.AppPath, QStringLiteral("Default.ksl"));
        save ? Save(file, true) : Open(file);
        return;
    }
    const ChosenFiles chosen = ShowFileDialog(save ? FileDialog::SavePlaylist : FileDialog::OpenPlaylist,
                                              state_, options_, prompts_);
    if (chosen.path.isEmpty() || chosen.file.isEmpty()) {
        return;
    }
    save ? Save(chosen.path + chosen.file, false) : Open(chosen.path + chosen.file);
}

void PlaylistFiles::Open(const QString& path) {
    if (!FileExists(path)) {
        return;
    }
    openLists_.append(QFileInfo(path).canonicalFilePath());
    Dispatch(path, openOperation, true);
    openLists_.removeLast();
    emit TotalsChanged();
    emit ListLoaded();
}

void PlaylistFiles::Save(const QString& path, bool isDefault) {
    // A known format replaces the old file as a whole. Under any other name nothing is written, and the old
    // file goes.
    if (!Dispatch(path, saveOperation, false) && FileExists(path)) {
        QFile::remove(path);
    }
    if (!isDefault) {
        prompts_.Message(tr("Saved successfully!"), PromptIcon::Warning);
    }
}

bool PlaylistFiles::Dispatch(const QString& path, const QString& operation, bool clearFirst) {
    const QString ending = path.right(4).toLower();
    if (ending == QLatin1String(".ksl")) {
        OpenSaveMyPlaylistKSL(path, operation, clearFirst);
    } else if (ending == QLatin1String(".m3u")) {
        OpenSaveWinaimM3U(path, operation, clearFirst);
    } else if (ending == QLatin1String(".pls")) {
        OpenSaveWinaimPls(path, operation, clearFirst);
    } else if (IsPlaylistFile(ending)) {
        OpenSaveMediaPlayerWAX(path, operation, clearFirst);
    } else {
        return false;
    }
    return true;
}

void PlaylistFiles::AppendList(const QString& path) {
    // A list may name other lists, and so in the end itself.
    const QString file = QFileInfo(path).canonicalFilePath();
    if (openLists_.contains(file)) {
        qCWarning(logPlaylist) << "a playlist names itself" << path;
        return;
    }
    openLists_.append(file);
    Dispatch(path, openOperation, false);
    openLists_.removeLast();
}

void PlaylistFiles::OpenSaveMyPlaylistKSL(const QString& path, const QString& operation, bool clearFirst) {
    if (operation == saveOperation) {
        SaveKsl(path);
        return;
    }
    QByteArray bytes = ReadWholeFile(path);
    if (KslCount(bytes) == 0) {
        return;
    }
    if (KslBuildOf(bytes) < kslBuild) {
        bytes = ConvertOlderKsl(bytes);
        // The list loads all the same from a place that cannot be written.
        if (!ReplaceKeepingOld(path, bytes)) {
            qCWarning(logPlaylist) << "an older playlist stays as it is" << path;
        }
    }
    if (clearFirst) {
        rows_.Clear();
    }
    for (PlaylistRow& row : DecodeKsl(bytes)) {
        row.fields[RowText].prepend(QString::number(rows_.Count() + 1) + u'.');
        rows_.Append(std::move(row));
    }
}

// A list that another program wrote is kept once. What was stored here before need not be looked at again.
void PlaylistFiles::SaveKsl(const QString& path) {
    const QByteArray bytes = EncodeKsl(rows_);
    const bool isOwn = ownLists_.contains(path) || IsOwnKsl(ReadWholeFile(path));
    if (isOwn ? ReplaceFile(path, bytes) : ReplaceKeepingOld(path, bytes)) {
        ownLists_.insert(path);
    }
}

void PlaylistFiles::OpenSaveWinaimM3U(const QString& path, const QString& operation, bool clearFirst) {
    if (operation == saveOperation) {
        ReplaceFile(path, EncodeM3u(rows_));
        return;
    }
    const ParsedList list = ParseM3u(ReadWholeFile(path));
    if (!list.isValid) {
        prompts_.Message(tr("Invalid Winamp M3U Playlist!"), PromptIcon::Warning);
        return;
    }
    AddTextEntries(list, path, clearFirst);
}

void PlaylistFiles::OpenSaveWinaimPls(const QString& path, const QString& operation, bool clearFirst) {
    if (operation == saveOperation) {
        ReplaceFile(path, EncodePls(rows_));
        return;
    }
    const ParsedList list = ParsePls(ReadWholeFile(path));
    if (!list.isValid) {
        prompts_.Message(tr("Invalid Winamp PLS Playlist!"), PromptIcon::Warning);
        return;
    }
    AddTextEntries(list, path, clearFirst);
}

void PlaylistFiles::AddTextEntries(const ParsedList& list, const QString& path, bool clearFirst) {
    QString baseFolder;
    QString name;
    SplitPath(path, baseFolder, name);
    if (clearFirst && !list.entries.empty()) {
        rows_.Clear();
    }
    for (const ListEntry& entry : list.entries) {
        QString folder;
        SplitPath(ResolveListPath(entry.path, baseFolder), folder, name);
        admission_.AddFiletoListfromList(folder, name, entry.title, static_cast<qint16>(entry.seconds), 0);
        emit WindowRepaint();
    }
    SaveDefault();
}

void PlaylistFiles::OpenSaveMediaPlayerWAX(const QString& path, const QString& operation, bool clearFirst) {
    if (operation == saveOperation) {
        ReplaceFile(path, EncodeAsx(rows_));
        return;
    }
    const ParsedList list = ParseAsx(ReadWholeFile(path));
    if (!list.isValid) {
        prompts_.Message(tr("Invalid Media Player Playlist!"), PromptIcon::Warning);
        return;
    }
    if (list.entries.empty()) {
        return;
    }
    QString baseFolder;
    QString name;
    SplitPath(path, baseFolder, name);
    if (clearFirst) {
        rows_.Clear();
    }
    int rowsAtSave = 0;
    for (const ListEntry& entry : list.entries) {
        AddAsxEntry(entry, baseFolder);
        if (&entry == &list.entries.back() || IsSaveDue(rows_.Count(), rowsAtSave)) {
            SaveDefault();
            rowsAtSave = rows_.Count();
        }
        emit WindowRepaint();
    }
}

void PlaylistFiles::AddAsxEntry(const ListEntry& entry, const QString& baseFolder) {
    QString folder;
    QString name;
    SplitPath(entry.isFullPath ? NativeListPath(entry.path) : ResolveListPath(entry.path, baseFolder), folder,
              name);
    const bool isComplete =
        !entry.path.isEmpty() && !entry.title.isEmpty() && entry.seconds != 0 && entry.bytes != 0;
    if (isComplete) {
        admission_.AddFiletoListfromList(folder, name, entry.title, static_cast<qint16>(entry.seconds),
                                         static_cast<qint32>(entry.bytes));
    } else {
        admission_.AddFiletoList(folder, name);
    }
}

void PlaylistFiles::SaveDefault() {
    OpenSavePlayList(saveOperation, true);
}

void PlaylistFiles::AddFilesByDialog() {
    const ChosenFiles chosen = ShowFileDialog(FileDialog::AddFiles, state_, options_, prompts_);
    if (chosen.list.isEmpty()) {
        if (!chosen.path.isEmpty() && !chosen.file.isEmpty()) {
            admission_.AddFiletoList(chosen.path, chosen.file);
        }
    } else {
        for (const QString& file : chosen.list) {
            QString folder;
            QString name;
            SplitPath(file, folder, name);
            admission_.AddFiletoList(folder, name);
            emit WindowRepaint();
            state_.CurPath = folder;
        }
    }
    emit FilesAdded();
    SaveDefault();
    emit NeighboursChanged();
}

void PlaylistFiles::AddDroppedFiles(const QStringList& files) {
    for (const QString& file : files) {
        if (file.isEmpty()) {
            continue;
        }
        QString folder;
        QString name;
        SplitPath(file, folder, name);
        admission_.AddFiletoList(folder, name);
        emit WindowRepaint();
    }
    SaveDefault();
}

} // namespace kestrune
