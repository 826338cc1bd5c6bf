// What the tag editor does: it shows the tag of one file, writes it back, and walks the playlist. It never
// asks whether to save: what was typed and not written goes with Previous, Next, another tag and Close.
#pragma once

#include "app/program_state.h"
#include "components/audio_information.h"
#include "components/user_prompts.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <QString>

namespace kestrune {

// What stands in the controls that can be edited.
struct TagControls {
    QString infoTitle;
    QString infoArtist;
    QString infoAlbum;
    int infoGenre = -1; // place in the list of genres, which is the genre's number; -1 for none
    QString infoGenreS;
    QString infoCopyright;
    QString infoComment;
    QString infoYear;
    QString infoTrack;
    QString infoComposer;
    QString infoURL;
    QString infoEncodedBy;
    QString infoOriginalArtist;
};

// What is shown of the file's sound.
struct TechnicalTexts {
    QString infoFormatString;
    QString infoFrequency;
    QString infoBitrate;
    QString infoDuration;
    QString infoChannels;
    QString infoSamples;
    QString infoSize;
    QString infoBitsPerSample;
    QString infoFormatTag;
};

// The objects must outlive it, and the rows may not come or go while it lives.
struct TagEditorParts {
    const ProgramState& state;
    PlaylistRows& rows;
    // One of its own, fresh: its tag kind has to be ID3v1 still.
    KSTAudioInformation2& information;
    UserPrompts& prompts;
};

// Call order: Load first. Files are read and written at once. Window thread.
class TagEditor : public QObject {
    Q_OBJECT
public:
    static constexpr int genreCount = 148;

    explicit TagEditor(const TagEditorParts& parts, QObject* parent = nullptr);

    // Shows the current row of the playlist.
    void Load() { GetInfo(parts_.state.CurIndex); }
    // Shows a row of the playlist, from 1 on; 0 counts as 1. No edit is left then.
    void GetInfo(int index);
    // Reads the file of AFile. What cannot be read leaves the values of the last file that could. Edits go;
    // whether there was one does not change.
    void ShowFileInfo();

    // The one before and the one behind, round the ends of the list.
    void Previous();
    void Next();
    // 0 for ID3v1, 1 for ID3v2; shows the file's other tag.
    void ChooseTagKind(int option);
    // Asks for another file and shows it. The row stays, and takes the new title with the next update.
    void ImageinPath();
    // Writes the controls into the file of AFile and the title into the row, and says so, whatever came of
    // the writing. The file of the row last started is left alone.
    void Update();

    // The user has changed something in the controls.
    void Edit(const TagControls& controls);
    // Something of the file was changed elsewhere and waits for an update.
    void CountAsEdit();

    const QString& AFile() const { return aFile_; } // full path
    int CurrentRowIndex() const { return currentRowIndex_; }
    const TagControls& Controls() const { return controls_; }
    const TechnicalTexts& Technical() const { return technical_; }
    bool IsUpdateEnabled() const { return isUpdateEnabled_; }
    QString GenreName(int index) const;
    KSTAudioInformation2& AudioInfo() { return parts_.information; }

signals:
    // Path, controls and technical data are to be shown anew.
    void Shown();
    void UpdateEnabled(bool enabled);

private:
    void SetUpdateEnabled(bool enabled);
    void SetProperties();

    TagEditorParts parts_;
    QString aFile_;
    int currentRowIndex_ = 0;
    TagControls controls_;
    TechnicalTexts technical_;
    bool isUpdateEnabled_ = false;
};

} // namespace kestrune
