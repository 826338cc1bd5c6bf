#include "desktop/media_control.h"

#include "app/paths.h"
#include "components/pcm.h"

#include <QDir>
#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

constexpr qint64 usPerMs = 1000;
constexpr qint64 usPerSecond = 1000000;

// Finer than the milliseconds of the player, so that a seek is told where it was asked for.
qint64 UsOfBytes(qint64 bytes, const KSTAudioFile2& file) {
    const qint32 rateHz = file.GetWaveFormat();
    const qint32 channels = file.GetChannels();
    return rateHz > 0 && channels > 0 ? bytes / frameBytes(channels) * usPerSecond / rateHz : 0;
}

// Album and the like are taken from the newer of two tags, or from the older where the newer has nothing.
void FillFromTag(KSTAudioInformation2& info, TagKind kind, const QString& path, MediaTrack& track) {
    info.SetTagVersion(kind);
    if (info.ReadTagFromFile(path) != Outcome::Ok) {
        return;
    }
    const TagFields& tag = info.Tag();
    const auto fill = [](QString& text, const QString& found) {
        if (text.isEmpty()) {
            text = found.trimmed();
        }
    };
    fill(track.album, tag.album);
    fill(track.composer, tag.composer);
    fill(track.genre, tag.genreText);
    fill(track.genre, info.GenreName(tag.genre));
    if (track.trackNumber <= 0) {
        track.trackNumber = tag.track;
    }
}

MediaTrack ReadTrackTags(KSTAudioInformation2& info, const QString& path) {
    MediaTrack track;
    if (info.OpenInfo(path) == Outcome::Ok) {
        track.artist = info.GetArtist();
        FillFromTag(info, TagKind::Id3v2, path, track);
        FillFromTag(info, TagKind::Id3v1, path, track);
    }
    return track;
}

} // namespace

MediaControl::MediaControl(MediaControlParts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)) {
    connect(&parts_.transport, &Transport::LampShown, this, &MediaControl::LampShown);
}

void MediaControl::Watch() {
    if (watching_) {
        return;
    }
    watching_ = true;
    told_ = State();
    connect(&parts_.transport, &Transport::ButtonEnabled, this, &MediaControl::Refresh);
    connect(&parts_.transport, &Transport::Sought, this, [this] { emit Seeked(PositionUs()); });
    connect(&parts_.options, &Options::Changed, this, &MediaControl::Refresh);
    // The title stands in the row.
    connect(&parts_.rows, &PlaylistRows::dataChanged, this, &MediaControl::Refresh);
    connect(&parts_.rows, &PlaylistRows::rowsRemoved, this, &MediaControl::Refresh);
    connect(&parts_.rows, &PlaylistRows::modelReset, this, &MediaControl::Refresh);
}

MediaState MediaControl::State() {
    const Transport& transport = parts_.transport;
    MediaState state;
    state.status = Status();
    const bool hasTrack = state.status != PlaybackStatus::Stopped;
    state.loop = parts_.options.IsModeChecked(PlayMode::Repeat) ? LoopStatus::Track : LoopStatus::Playlist;
    state.shuffle = parts_.options.IsModeChecked(PlayMode::Shuffle);
    state.volume = parts_.knob.Volume();
    if (hasTrack) {
        state.track = Track();
    }
    state.canGoNext = transport.IsButtonEnabled(ButtonNext);
    state.canGoPrevious = transport.IsButtonEnabled(ButtonPrevious);
    // These two belong to the track and do not change by a pause.
    state.canPlay = hasTrack || transport.IsButtonEnabled(ButtonPlay);
    state.canPause = hasTrack && transport.IsButtonEnabled(ButtonPause);
    state.canSeek = hasTrack && state.track.lengthUs > 0;
    return state;
}

PlaybackStatus MediaControl::Status() const {
    const TransportState now = parts_.transport.State();
    if (!now.IsPlaying) {
        return PlaybackStatus::Stopped;
    }
    return now.lamp == Lamp::Paused ? PlaybackStatus::Paused : PlaybackStatus::Playing;
}

MediaTrack MediaControl::Track() {
    const QString path = parts_.transport.State().PlayFile;
    const QString id = TrackIdOf(path);
    if (tags_.id != id) {
        tags_ = ReadTrackTags(parts_.audioInfo, path);
        tags_.id = id;
        tags_.url = QUrl::fromLocalFile(path);
    }
    MediaTrack track = tags_;
    track.lengthUs = parts_.audioFile.GetLengthMs() * usPerMs;
    const int row = parts_.transport.PlayingRow();
    track.title = row > 0 ? parts_.rows.Title(row).trimmed() : path.section(u'/', -1);
    // A row shows the artist too, which has a place of its own here.
    const QString head = tags_.artist + QStringLiteral(" - ");
    if (!tags_.artist.isEmpty() && track.title.startsWith(head)) {
        track.title.remove(0, head.size());
    }
    return track;
}

qint64 MediaControl::PositionUs() {
    if (Status() == PlaybackStatus::Stopped) {
        return 0;
    }
    KSTAudioFile2& file = parts_.audioFile;
    const qint64 us = UsOfBytes(parts_.transport.HeardBytes(), file);
    const qint64 lengthUs = file.GetLengthMs() * usPerMs;
    return lengthUs > 0 ? std::min(us, lengthUs) : us;
}

bool MediaControl::CanPress(TransportButton button) const {
    return parts_.transport.IsButtonEnabled(button) && !parts_.isBlocked();
}

void MediaControl::Play() {
    const PlaybackStatus status = Status();
    if (status == PlaybackStatus::Playing || !CanPress(ButtonPlay)) {
        return;
    }
    if (status == PlaybackStatus::Stopped) {
        // A pause that is still noted from an earlier file would be ended in place of a start.
        parts_.transport.ForgetPause();
    }
    parts_.buttons.Play();
}

void MediaControl::Pause() {
    if (Status() != PlaybackStatus::Playing || !CanPress(ButtonPause)) {
        return;
    }
    // The same here: the file would start over.
    parts_.transport.ForgetPause();
    parts_.buttons.Pause();
}

void MediaControl::PlayPause() {
    if (Status() == PlaybackStatus::Playing) {
        Pause();
    } else {
        Play();
    }
}

void MediaControl::Stop() {
    if (CanPress(ButtonStop)) {
        parts_.buttons.Stop();
    }
}

void MediaControl::Next() {
    if (CanPress(ButtonNext)) {
        parts_.buttons.Next();
    }
}

void MediaControl::Previous() {
    if (CanPress(ButtonPrevious)) {
        parts_.buttons.Previous();
    }
}

void MediaControl::SeekBy(qint64 us) {
    const MediaState state = State();
    if (!state.canSeek || parts_.isBlocked()) {
        return;
    }
    // Compared by the way that is left, so that no span is too long to be added.
    const qint64 positionUs = PositionUs();
    if (us > state.track.lengthUs - positionUs && state.canGoNext) {
        Next();
        return;
    }
    const qint64 spanUs = std::clamp(us, -positionUs, state.track.lengthUs - positionUs);
    parts_.transport.SeekToMs((positionUs + spanUs) / usPerMs);
}

void MediaControl::SetPosition(const QString& trackId, qint64 us) {
    const MediaState state = State();
    if (state.canSeek && !parts_.isBlocked() && trackId == state.track.id && us >= 0 &&
        us <= state.track.lengthUs) {
        parts_.transport.SeekToMs(us / usPerMs);
    }
}

// The path of a file that exists, else empty.
QString MediaControl::LocalFile(const QString& uri) {
    const QUrl url(uri);
    const QString host = url.host();
    if (url.scheme() != QLatin1String("file") || !(host.isEmpty() || host == QLatin1String("localhost"))) {
        return {};
    }
    const QString path = QDir::cleanPath(url.path(QUrl::FullyDecoded));
    return FileExists(path) ? path : QString();
}

bool MediaControl::CanOpen(const QString& uri) {
    const QString path = LocalFile(uri);
    return !path.isEmpty() && (IsPlaylistFile(path) || !parts_.admission.GetMusicInfo(path).Time.isEmpty());
}

void MediaControl::Open(const QString& uri) {
    if (parts_.isBlocked() || !CanOpen(uri)) {
        return;
    }
    const QString path = LocalFile(uri);
    const PlaylistRows& rows = parts_.rows;
    const int rowsBefore = rows.Count();
    parts_.files.AddDroppedFiles({path});
    if (rows.Count() > rowsBefore) {
        // The new row, or the first of a playlist. A list with gaps in its numbers may have sorted it in.
        int row = rows.Count();
        while (row > 0 && rows.FullPath(row) != path) {
            --row;
        }
        parts_.buttons.ListViewPlaylist_DblClick(row > 0 ? row : rowsBefore + 1);
    }
    // Nothing is started when the file plays already.
    parts_.transport.SetPreNextButton();
}

void MediaControl::SetLoop(LoopStatus loop) {
    if (loop == LoopStatus::Track) {
        parts_.options.ImageRepeatModeBut_Click(static_cast<int>(PlayMode::Repeat));
    } else if (parts_.options.IsModeChecked(PlayMode::Repeat)) {
        parts_.options.ImageRepeatModeBut_Click(static_cast<int>(PlayMode::Continuous));
    }
}

void MediaControl::SetShuffle(bool shuffle) {
    if (shuffle) {
        parts_.options.ImageRepeatModeBut_Click(static_cast<int>(PlayMode::Shuffle));
    } else if (parts_.options.IsModeChecked(PlayMode::Shuffle)) {
        parts_.options.ImageRepeatModeBut_Click(static_cast<int>(PlayMode::Continuous));
    }
}

void MediaControl::SetVolume(double fraction) {
    emit VolumeRequested(VolumeOfFraction(fraction));
    Refresh();
}

void MediaControl::Quit() {
    if (!parts_.isBlocked()) {
        emit QuitRequested();
    }
}

void MediaControl::LampShown(Lamp lamp) {
    if (lamp == Lamp::Stopped) {
        restarted_ = true;
        tags_ = {};
    }
    Refresh();
}

// A change of the track passes through a stop, and a long load through many rows: only what comes out of it
// in the end is told.
void MediaControl::Refresh() {
    if (watching_ && !telling_) {
        telling_ = true;
        QMetaObject::invokeMethod(this, &MediaControl::TellChanges, Qt::QueuedConnection);
    }
}

void MediaControl::TellChanges() {
    telling_ = false;
    const MediaState now = State();
    const MediaProperties changed = ChangedProperties(told_, now);
    // The same track from its start again, which nothing else tells.
    const bool fromStart = restarted_ && told_.status != PlaybackStatus::Stopped &&
                           now.status != PlaybackStatus::Stopped && told_.track.id == now.track.id;
    told_ = now;
    restarted_ = false;
    if (changed) {
        emit Changed(now, changed);
    }
    if (fromStart) {
        emit Seeked(PositionUs());
    }
}

} // namespace kestrune
