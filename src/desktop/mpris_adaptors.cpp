#include "desktop/mpris_adaptors.h"

#include <QDBusError>
#include <QMetaObject>

namespace kestrune {

namespace {

QString TextOf(PlaybackStatus status) {
    switch (status) {
    case PlaybackStatus::Playing:
        return QStringLiteral("Playing");
    case PlaybackStatus::Paused:
        return QStringLiteral("Paused");
    case PlaybackStatus::Stopped:
        break;
    }
    return QStringLiteral("Stopped");
}

QString TextOf(LoopStatus loop) {
    switch (loop) {
    case LoopStatus::Track:
        return QStringLiteral("Track");
    case LoopStatus::Playlist:
        return QStringLiteral("Playlist");
    case LoopStatus::None:
        break;
    }
    return QStringLiteral("None");
}

// Empty without a track; a field that is not known is left out.
QVariantMap MetadataOf(const MediaTrack& track) {
    QVariantMap map;
    if (track.id.isEmpty()) {
        return map;
    }
    const auto addText = [&map](const char* key, const QString& text, bool asList) {
        if (!text.isEmpty()) {
            map.insert(QString::fromLatin1(key), asList ? QVariant(QStringList(text)) : QVariant(text));
        }
    };
    map.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(track.id)));
    if (track.lengthUs > 0) {
        map.insert(QStringLiteral("mpris:length"), static_cast<qlonglong>(track.lengthUs));
    }
    addText("xesam:url", track.url.toString(QUrl::FullyEncoded), false);
    addText("xesam:title", track.title, false);
    addText("xesam:artist", track.artist, true);
    addText("xesam:album", track.album, false);
    addText("xesam:composer", track.composer, true);
    addText("xesam:genre", track.genre, true);
    if (track.trackNumber > 0) {
        map.insert(QStringLiteral("xesam:trackNumber"), track.trackNumber);
    }
    return map;
}

} // namespace

QVariantMap MprisPlayerProperties(const MediaState& state, MediaProperties which) {
    QVariantMap map;
    const auto add = [&](MediaProperty property, const char* name, const QVariant& value) {
        if (which.testFlag(property)) {
            map.insert(QString::fromLatin1(name), value);
        }
    };
    add(MediaProperty::Status, "PlaybackStatus", TextOf(state.status));
    add(MediaProperty::Loop, "LoopStatus", TextOf(state.loop));
    add(MediaProperty::Shuffle, "Shuffle", state.shuffle);
    add(MediaProperty::Volume, "Volume", FractionOfVolume(state.volume));
    add(MediaProperty::Track, "Metadata", MetadataOf(state.track));
    add(MediaProperty::CanGoNext, "CanGoNext", state.canGoNext);
    add(MediaProperty::CanGoPrevious, "CanGoPrevious", state.canGoPrevious);
    add(MediaProperty::CanPlay, "CanPlay", state.canPlay);
    add(MediaProperty::CanPause, "CanPause", state.canPause);
    add(MediaProperty::CanSeek, "CanSeek", state.canSeek);
    return map;
}

MprisRoot::MprisRoot(MediaControl& control, QObject* parent)
    : QDBusAbstractAdaptor(parent), control_(control) {}

QStringList MprisRoot::SupportedMimeTypes() const {
    QStringList types;
    for (const char* type : {"audio/x-wav",      "audio/vnd.wave",    "audio/mpeg",      "audio/mp2",
                             "audio/ogg",        "application/ogg",   "audio/flac",      "audio/x-vorbis+ogg",
                             "audio/x-opus+ogg", "audio/x-speex+ogg", "audio/x-speex",   "audio/x-flac+ogg",
                             "audio/x-ms-wma",   "audio/x-musepack",  "audio/x-wavpack", "audio/x-ape",
                             "audio/x-tta",      "audio/x-aiff",      "audio/mp4",       "audio/aac",
                             "audio/ac3",        "audio/basic",       "audio/x-gsm",     "audio/x-matroska",
                             "audio/x-mpegurl",  "audio/x-scpls",     "audio/x-ms-asx",  "video/x-ms-wax",
                             "video/x-ms-wvx"}) {
        types.append(QString::fromLatin1(type));
    }
    return types;
}

void MprisRoot::Raise() {
    control_.Raise();
}

void MprisRoot::Quit() {
    QMetaObject::invokeMethod(&control_, &MediaControl::Quit, Qt::QueuedConnection);
}

MprisPlayer::MprisPlayer(MediaControl& control, const QDBusConnection& bus, QObject* parent)
    : QDBusAbstractAdaptor(parent), control_(control), bus_(bus) {
    connect(&control_, &MediaControl::Seeked, this, &MprisPlayer::Seeked);
}

template <typename Command>
void MprisPlayer::Later(Command command) {
    QMetaObject::invokeMethod(&control_, command, Qt::QueuedConnection);
}

QString MprisPlayer::PlaybackStatus() const {
    return TextOf(control_.State().status);
}

QString MprisPlayer::LoopStatus() const {
    return TextOf(control_.State().loop);
}

void MprisPlayer::SetLoopStatus(const QString& loop) {
    for (const kestrune::LoopStatus known :
         {kestrune::LoopStatus::None, kestrune::LoopStatus::Track, kestrune::LoopStatus::Playlist}) {
        if (loop == TextOf(known)) {
            control_.SetLoop(known);
        }
    }
}

void MprisPlayer::SetRate(double rate) {
    if (rate == 0.0) {
        Pause();
    }
}

QVariantMap MprisPlayer::Metadata() const {
    return MetadataOf(control_.State().track);
}

double MprisPlayer::Volume() const {
    return FractionOfVolume(control_.State().volume);
}

void MprisPlayer::Play() {
    Later(&MediaControl::Play);
}

void MprisPlayer::Pause() {
    Later(&MediaControl::Pause);
}

void MprisPlayer::PlayPause() {
    Later(&MediaControl::PlayPause);
}

void MprisPlayer::Stop() {
    Later(&MediaControl::Stop);
}

void MprisPlayer::Next() {
    Later(&MediaControl::Next);
}

void MprisPlayer::Previous() {
    Later(&MediaControl::Previous);
}

void MprisPlayer::Seek(qlonglong Offset) {
    Later([&control = control_, Offset] { control.SeekBy(Offset); });
}

void MprisPlayer::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position) {
    Later([&control = control_, id = TrackId.path(), Position] { control.SetPosition(id, Position); });
}

void MprisPlayer::OpenUri(const QString& Uri, const QDBusMessage& message) {
    if (!control_.CanOpen(Uri)) {
        message.setDelayedReply(true);
        bus_.send(message.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("Not the address of an audio file or playlist that exists on this machine")));
        return;
    }
    Later([&control = control_, Uri] { control.Open(Uri); });
}

} // namespace kestrune
