#include "desktop/media_state.h"

#include "components/audio_player.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>

namespace kestrune {

MediaProperties ChangedProperties(const MediaState& before, const MediaState& after) {
    MediaProperties changed;
    changed.setFlag(MediaProperty::Status, before.status != after.status);
    changed.setFlag(MediaProperty::Loop, before.loop != after.loop);
    changed.setFlag(MediaProperty::Shuffle, before.shuffle != after.shuffle);
    changed.setFlag(MediaProperty::Volume, before.volume != after.volume);
    changed.setFlag(MediaProperty::Track, before.track != after.track);
    changed.setFlag(MediaProperty::CanGoNext, before.canGoNext != after.canGoNext);
    changed.setFlag(MediaProperty::CanGoPrevious, before.canGoPrevious != after.canGoPrevious);
    changed.setFlag(MediaProperty::CanPlay, before.canPlay != after.canPlay);
    changed.setFlag(MediaProperty::CanPause, before.canPause != after.canPause);
    changed.setFlag(MediaProperty::CanSeek, before.canSeek != after.canSeek);
    return changed;
}

QString TrackIdOf(const QString& path) {
    // An element of an object path may hold letters, digits and underscores only.
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QStringLiteral("/org/kestrune/track/") + QString::fromLatin1(hash);
}

double FractionOfVolume(qint32 volume) {
    return static_cast<double>(std::clamp(volume, 0, fullVolume)) / fullVolume;
}

qint32 VolumeOfFraction(double fraction) {
    if (std::isnan(fraction)) {
        return 0;
    }
    return static_cast<qint32>(std::lround(std::clamp(fraction, 0.0, 1.0) * fullVolume));
}

} // namespace kestrune
