#include "editors/tag_editor.h"

#include "app/failure_log.h"
#include "editors/number_texts.h"
#include "playlist/file_choice.h"
#include "playlist/playlist_text.h"

#include <limits>

namespace kestrune {

namespace {

QString OpenFilter() {
    // The commas in the first pattern belong to it.
    return FilterText(
        {{QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Supported Files"),
          "*.mp3;*.mp2;*.mpeg,*.mpc;*.mp+;*.wma;*.wav;*.ogg,*.avi"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "MPEG Files(*.mp3;*.mp2;*.mpeg;*.mpc;*.mp+)"),
          "*.mp3;*.mp2;*.mpeg;*.mpc;*.mp+"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "WMA Files(*.wma)"), "*.wma"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Wav Files (*.wav)"), "*.wav"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "Ogg Vorbis Files(*.ogg)"), "*.ogg"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "AVI Files(*.avi)"), "*.avi"},
         {QT_TRANSLATE_NOOP("kestrune::FileChoice", "All Files(*.*)"), "*.*"}});
}

// Text that is no number of the property's type leaves the property alone.
template <typename Number>
void TakeNumber(const QString& text, Number& property) {
    using Limits = std::numeric_limits<Number>;
    if (const auto number = NumberOfText(text, Limits::min(), Limits::max())) {
        property = static_cast<Number>(*number);
    }
}

TagControls ControlsOf(const TagFields& tag) {
    TagControls controls;
    controls.infoTitle = tag.title;
    controls.infoArtist = tag.artist;
    controls.infoAlbum = tag.album;
    controls.infoGenre = tag.genre >= 0 && tag.genre < TagEditor::genreCount ? tag.genre : -1;
    controls.infoGenreS = tag.genreText;
    controls.infoCopyright = tag.copyright;
    controls.infoComment = tag.comment;
    controls.infoYear = QString::number(tag.year);
    controls.infoTrack = QString::number(tag.track);
    controls.infoComposer = tag.composer;
    controls.infoURL = tag.url;
    controls.infoEncodedBy = tag.encodedBy;
    controls.infoOriginalArtist = tag.originalArtist;
    return controls;
}

TechnicalTexts TechnicalOf(const KSTAudioInformation2& information) {
    TechnicalTexts texts;
    texts.infoFormatString = information.GetFormatString();
    texts.infoFrequency = TagEditor::tr("%1 Hz").arg(information.Frequency());
    texts.infoBitrate = TagEditor::tr("%1 bps").arg(information.GetBitrate());
    texts.infoDuration = TagEditor::tr("%1 ms").arg(information.GetDurationMs());
    texts.infoChannels = QString::number(information.Channels());
    texts.infoSamples = QString::number(information.Samples());
    texts.infoSize = QString::number(information.FileSize());
    texts.infoBitsPerSample = QString::number(information.BitsPerSample());
    texts.infoFormatTag = QString::number(information.FormatTag());
    return texts;
}

} // namespace

TagEditor::TagEditor(const TagEditorParts& parts, QObject* parent) : QObject(parent), parts_(parts) {}

void TagEditor::GetInfo(int index) {
    const int row = index == 0 ? 1 : index;
    aFile_ = parts_.rows.FullPath(row);
    ShowFileInfo();
    currentRowIndex_ = row;
    SetUpdateEnabled(false);
}

void TagEditor::ShowFileInfo() {
    PassOver(logEditors, parts_.information.ReadTagFromFile(aFile_), "ReadTagFromFile", aFile_);
    controls_ = ControlsOf(parts_.information.Tag());
    technical_ = TechnicalOf(parts_.information);
    emit Shown();
}

void TagEditor::Previous() {
    GetInfo(currentRowIndex_ <= 1 ? parts_.rows.Count() : currentRowIndex_ - 1);
}

void TagEditor::Next() {
    GetInfo(currentRowIndex_ >= parts_.rows.Count() ? 1 : currentRowIndex_ + 1);
}

void TagEditor::ChooseTagKind(int option) {
    parts_.information.SetTagVersion(option == 0 ? TagKind::Id3v1 : TagKind::Id3v2);
    ShowFileInfo();
}

void TagEditor::ImageinPath() {
    FileChoice choice;
    choice.title = tr("Open Audio File");
    choice.filter = OpenFilter();
    choice.mustExist = true;
    if (!aFile_.isEmpty()) {
        QString name;
        SplitPath(aFile_, choice.startFolder, name);
    }
    const QString chosen = parts_.prompts.ChooseFiles(choice).files.value(0);
    if (chosen.isEmpty()) {
        return;
    }
    aFile_ = chosen;
    ShowFileInfo();
}

void TagEditor::Update() {
    const int playing = parts_.state.LastIndex;
    if (playing > 0 && aFile_ == parts_.rows.FullPath(playing)) {
        parts_.prompts.Message(tr("Can't update current file!"), PromptIcon::Warning);
        return;
    }
    SetProperties();
    PassOver(logEditors, parts_.information.SaveTagToFile(aFile_), "SaveTagToFile", aFile_);
    const TagFields& tag = parts_.information.Tag();
    const QString head = TitleHead(parts_.rows.Field(currentRowIndex_, RowText));
    parts_.rows.SetField(currentRowIndex_, RowText, head + tag.artist + QStringLiteral(" - ") + tag.title);
    parts_.prompts.Message(tr("Updated Successfully!"), PromptIcon::Warning);
}

void TagEditor::SetProperties() {
    TagFields& tag = parts_.information.Tag();
    tag.title = controls_.infoTitle;
    tag.artist = controls_.infoArtist;
    tag.album = controls_.infoAlbum;
    // No entry is chosen only when the file's own number is not in the list; it stays then.
    if (controls_.infoGenre >= 0) {
        tag.genre = static_cast<qint16>(controls_.infoGenre);
    }
    tag.copyright = controls_.infoCopyright;
    tag.comment = controls_.infoComment;
    TakeNumber(controls_.infoYear, tag.year);
    TakeNumber(controls_.infoTrack, tag.track);
    tag.url = controls_.infoURL;
    tag.composer = controls_.infoComposer;
    tag.encodedBy = controls_.infoEncodedBy;
    tag.genreText = controls_.infoGenreS;
    tag.originalArtist = controls_.infoOriginalArtist;
}

void TagEditor::Edit(const TagControls& controls) {
    controls_ = controls;
    SetUpdateEnabled(true);
}

void TagEditor::CountAsEdit() {
    SetUpdateEnabled(true);
}

QString TagEditor::GenreName(int index) const {
    return parts_.information.GenreName(static_cast<qint16>(index));
}

void TagEditor::SetUpdateEnabled(bool enabled) {
    isUpdateEnabled_ = enabled;
    emit UpdateEnabled(enabled);
}

} // namespace kestrune
