#include "playlist/file_choice.h"

#include "app/paths.h"
#include "playlist/playlist_text.h"

#include <QCoreApplication>
#include <QDir>
#include <array>

namespace kestrune {

namespace {

constexpr FilterEntry allPlaylists = {
    QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Supported Playlists(*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx)"),
    "*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx"};
constexpr FilterEntry wmaFiles = {QT_TRANSLATE_NOOP("kestrune::FileChoice", "WMA Files (*.wma)"), "*.wma"};
constexpr FilterEntry wavFiles = {QT_TRANSLATE_NOOP("kestrune::FileChoice", "WAV Files (*.wav)"), "*.wav"};
constexpr FilterEntry oggFiles = {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Ogg Vorbis Files (*.ogg)"),
                                  "*.ogg"};
constexpr FilterEntry allFiles = {QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Files (*.*)"), "*.*"};

QString AddFilesFilter() {
    return FilterText(
               {{QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Supported Formats"),
                 "*.wav;*.mp3;*.mp2;*.mp1;*.mpeg;*.vox;*.raw;*.pcm;*.gsm;*.adpcm;*.g726;*.g721;*.g723;"
                 "*.ogg;*.wma;*.mpc;*.mp+;*.dss;*.ksl;*.m3u;*.pls;*.wax;*.asx;*.wvx"},
                allPlaylists,
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "MPEG Files (*.mp3;*.mp2;*.mp1;*.mpeg)"),
                 "*.mp3;*.mp2;*.mp1;*.mpeg"},
                wmaFiles,
                wavFiles,
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Dialogic ADPCM Files (*.vox)"), "*.vox"},
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Raw Files (*.raw;*.pcm;*.gsm;*.adpcm)"),
                 "*.raw;*.pcm;*.gsm;*.adpcm"},
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "CCUIT G726 Files (*.g726)"), "*.g726"},
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "CCUIT G721 Files (*.g721)"), "*.g721"},
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "CCUIT G721 Files (*.g723)"), "*.g723"},
                oggFiles,
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "MPPlus Files (*.mpc;*.mp+)"), "*.mpc;*.mp+"},
                {QT_TRANSLATE_NOOP("kestrune::FileChoice", "DSS Files (*.dss)"), "*.dss"},
                allFiles}) +
           u'|';
}

QString BurningFilter() {
    return FilterText({{QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Supported Audio Formats"),
                        "*.mp3;*.wma;*.wav;*.ogg"},
                       {QT_TRANSLATE_NOOP("kestrune::FileChoice", "MP3 Files (*.mp3)"), "*.mp3"},
                       wmaFiles,
                       wavFiles,
                       oggFiles}) +
           u'|';
}

QString PlaylistFilter() {
    return FilterText(
        {allPlaylists,
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Playlist Files (*.ksl)"), "*.ksl"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Winamp M3U Playlist(*.m3u)"), "*.m3u"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Winamp PLS Playlist(*.pls)"), "*.pls"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Media Player ASX Playlist(*.asx)"), "*.asx"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Media Player WVX Playlist(*.wvx)"), "*.wvx"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Media Player WAX Playlist(*.wax)"), "*.wax"},
         allFiles});
}

QString TitleOf(FileDialog dialog) {
    switch (dialog) {
    case FileDialog::AddFiles:
        return QCoreApplication::translate("kestrune::FileChoice", "Add audio files");
    case FileDialog::AddForBurning:
        return QCoreApplication::translate("kestrune::FileChoice", "Add audio files for burning");
    case FileDialog::OpenPlaylist:
        return QCoreApplication::translate("kestrune::FileChoice", "Open playlist");
    case FileDialog::SavePlaylist:
        return QCoreApplication::translate("kestrune::FileChoice", "Save playlist");
    }
    return {};
}

constexpr std::array<const char*, 18> audioEndings = {".wav",  ".mp3", ".mp2", ".mp1",   ".mpeg", ".vox",
                                                      ".raw",  ".pcm", ".gsm", ".adpcm", ".g726", ".g721",
                                                      ".g723", ".ogg", ".wma", ".mpc",   ".mp",   ".dss"};

} // namespace

QString FilterText(std::initializer_list<FilterEntry> entries) {
    QStringList parts;
    for (const FilterEntry& entry : entries) {
        parts.append(QCoreApplication::translate("kestrune::FileChoice", entry.label));
        parts.append(QLatin1String(entry.patterns));
    }
    return parts.join(u'|');
}

FileChoice FileChoiceFor(FileDialog dialog) {
    FileChoice choice;
    choice.title = TitleOf(dialog);
    choice.multiple = dialog == FileDialog::AddFiles || dialog == FileDialog::AddForBurning;
    choice.save = dialog == FileDialog::SavePlaylist;
    choice.mustExist = !choice.save;
    if (choice.multiple) {
        choice.filter = dialog == FileDialog::AddFiles ? AddFilesFilter() : BurningFilter();
    } else {
        choice.filter = PlaylistFilter();
    }
    return choice;
}

ChosenFiles ShowFileDialog(FileDialog dialog, ProgramState& state, Options& options, UserPrompts& prompts) {
    if (state.CurPath.isEmpty()) {
        state.CurPath = QDir::currentPath();
    }
    FileChoice choice = FileChoiceFor(dialog);
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
