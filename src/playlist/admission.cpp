#include "playlist/admission.h"

#include "app/paths.h"
#include "playlist/playlist_order.h"
#include "playlist/playlist_text.h"

#include <QFileInfo>
#include <cmath>

namespace kestrune {

bool IsPlaylistFile(const QString& name) {
    const QString ending = name.right(4).toLower();
    for (const char* known : {".ksl", ".m3u", ".pls", ".wax", ".asx", ".wvx"}) {
        if (ending == QLatin1String(known)) {
            return true;
        }
    }
    return false;
}

Admission::Admission(PlaylistRows& rows, KSTAudioInformation2& audioInfo, UserPrompts& prompts,
                     QObject* parent)
    : QObject(parent), rows_(rows), audioInfo_(audioInfo), prompts_(prompts) {}

MusicInfo Admission::GetMusicInfo(const QString& file) {
    MusicInfo info;
    if (audioInfo_.OpenInfo(file) != Outcome::Ok) {
        return info;
    }
    const qint64 durationMs = audioInfo_.GetDurationMs();
    const double kilobits = static_cast<double>(audioInfo_.GetBitrate()) / 1024;
    info.SizeKB = static_cast<qint64>(std::floor(kilobits * (static_cast<double>(durationMs) / 1000) / 8));
    info.Time = FormatMinutes(durationMs / 1000);
    info.Formats = audioInfo_.GetFormatString();
    info.Title = audioInfo_.GetTitle();
    const QString artist = audioInfo_.GetArtist();
    if (!artist.isEmpty()) {
        info.Title = artist + QStringLiteral(" - ") + info.Title;
    }
    return info;
}

void Admission::AddFiletoList(const QString& path, const QString& fileName) {
    const QString file = path + fileName;
    if (!FileExists(file)) {
        return;
    }
    emit WaitCursor(true);
    if (IsPlaylistFile(fileName)) {
        if (listReader_ != nullptr) {
            listReader_->AppendList(file);
        }
    } else {
        const MusicInfo info = GetMusicInfo(file);
        if (info.Time.isEmpty()) {
            prompts_.Message(tr("Invalid audio file!"), PromptIcon::Warning);
            emit WaitCursor(false);
            return;
        }
        const bool hasTitle = !info.Title.isEmpty() && info.Title != QLatin1String(" ");
        AddRow(path, fileName,
               hasTitle ? info.Title : fileName.chopped(std::min<qsizetype>(4, fileName.size())), info.Time,
               info.SizeKB, info.Formats);
    }
    emit TotalsChanged();
    RestoreIndexOrder(rows_);
    emit RowShown(rows_.Count());
    emit WaitCursor(false);
}

void Admission::AddFiletoListfromList(const QString& path, const QString& fileName, const QString& title,
                                      qint16 seconds, qint32 bytes) {
    const QString file = path + fileName;
    if (!FileExists(file)) {
        return;
    }
    const qint64 length = bytes == 0 ? QFileInfo(file).size() : bytes;
    AddRow(path, fileName, title, FormatMinutes(seconds), length / 1024, QString());
    emit TotalsChanged();
    emit RowShown(rows_.Count());
    emit WaitCursor(false);
}

void Admission::AddRow(const QString& path, const QString& fileName, const QString& title,
                       const QString& time, qint64 kilobytes, const QString& formats) {
    PlaylistRow row;
    row.fields[RowText] = QString::number(rows_.Count() + 1) + u'.' + title;
    row.fields[SubTime] = time;
    row.fields[SubType] = RowType(fileName);
    row.fields[SubSize] = FormatSize(kilobytes);
    row.fields[SubFolder] = path;
    row.fields[SubFileName] = fileName;
    row.fields[SubFormats] = formats;
    rows_.Append(std::move(row));
}

} // namespace kestrune
