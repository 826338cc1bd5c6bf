#include "playlist/file_choice.h"

#include "app/paths.h"
#include "playlist/playlist_text.h"

#include <QDir>
#include <array>

namespace kestrune {

namespace {

const QString allPlaylists = QStringLiteral("All Supported Playlists(*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx)|"
                                            "*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx|");

const QString addFilesFilter =
    QStringLiteral("All Supported Formats|"
                   "*.wav;*.mp3;*.mp2;*.mp1;*.mpeg;*.vox;*.raw;*.pcm;*.gsm;*.adpcm;*.g726;*.g721;*.g723;"
                   "*.ogg;*.wma;*.mpc;*.mp+;*.dss;*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx|") +
    allPlaylists +
    QStringLiteral("MPEG Files (*.mp3;*.mp2;*.mp1;*.mpeg)|*.mp3;*.mp2;*.mp1;*.mpeg|"
                   "WMA Files (*.wma)|*.wma|"
                   "WAV Files (*.wav)|*.wav|"
                   "Dialogic ADPCM Files (*.vox)|*.vox|"
                   "Raw Files (*.raw;*.pcm;*.gsm;*.adpcm)|*.raw;*.pcm;*.gsm;*.adpcm|"
                   "CCUIT G726 Files (*.g726)|*.g726|"
                   "CCUIT G721 Files (*.g721)|*.g721|"
                   "CCUIT G721 Files (*.g723)|*.g723|"
                   "Ogg Vorbis Files (*.ogg)|*.ogg|"
                   "MPPlus Files (*.mpc;*.mp+)|*.mpc;*.mp+|"
                   "DSS Files (*.dss)|*.dss|"
                   "All Files (*.*)|*.*|");

const QString burningFilter = QStringLiteral("All Supported Audio Formats|*.mp3;*.wma;*.wav;*.ogg|"
                                             "MP3 Files (*.mp3)|*.mp3|"
                                             "WMA Files (*.wma)|*.wma|"
                                             "WAV Files (*.wav)|*.wav|"
                                             "Ogg Vorbis Files (*.ogg)|*.ogg|");

const QString playlistFilter = allPlaylists + QStringLiteral("Playlist Files (*.ksl)|*.ksl|"
                                                             "Winamp M3U Playlist(*.m3u)|*.m3u|"
                                                             "Winamp PLS Playlist(*.pls)|*.pls|"
                                                             "Media Player ASX Playlist(*.asx)|*.asx|"
                                                             "Media Player WVX Playlist(*.wvx)|*.wvx|"
                                                             "Media Player WAX Playlist(*.wax)|*.wax|"
                                                             "All Files (*.*)|*.*");

constexpr std::array<const char*, 18> audioEndings = {".wav",  ".mp3", ".mp2", ".mp1",   ".mpeg", ".vox",
                                                      ".raw",  ".pcm", ".gsm", ".adpcm", ".g726", ".g721",
                                                      ".g723", ".ogg", ".wma", ".mpc",   ".mp",   ".dss"};

} // namespace

FileChoice FileChoiceFor(const QString& title) {
    FileChoice choice;
    choice.title = title;
    if (title == addFilesTitle || title == addForBurningTitle) {
        choice.filter = title == addFilesTitle ? addFilesFilter : burningFilter;
        choice.multiple = true;
        choice.mustExist = true;
    } else if (title == openPlaylistTitle) {
        choice.filter = playlistFilter;
        choice.mustExist = true;
    } else if (title == savePlaylistTitle) {
        choice.filter = playlistFilter;
        choice.save = true;
    }
    return choice;
}

ChosenFiles ShowFileDialog(const QString& title, ProgramState& state, Options& options,
                           UserPrompts& prompts) {
    if (state.CurPath.isEmpty()) {
        state.CurPath = QDir::currentPath();
    }
    FileChoice choice = FileChoiceFor(title);
    choice.startFolder = state.CurPath;
    const QStringList files = prompts.ChooseFiles(choice).files;
    ChosenFiles chosen;
    if (files.isEmpty()) {
        return chosen;
    }
    if (files.size() > 1 && choice.multiple) {
        chosen.list = files;
        QString unused;
        SplitPath(files.first(), state.CurPath, unused);
    } else {
        SplitPath(files.first(), chosen.path, chosen.file);
        state.CurPath = chosen.path;
    }
    options.SaveGetCurPath(QStringLiteral("SAVE"));
    return chosen;
}

bool IsAudioFile(const QString& file) {
    if (!FileExists(file)) {
        return false;
    }
    QString ending = file.right(4);
    if (!ending.startsWith(u'.')) {
        ending = file.right(5);
    }
    if (!ending.startsWith(u'.')) {
        return false;
    }
    ending = ending.toLower();
    return std::any_of(audioEndings.begin(), audioEndings.end(),
                       [&](const char* known) { return ending == QLatin1String(known); });
}

} // namespace kestrune
