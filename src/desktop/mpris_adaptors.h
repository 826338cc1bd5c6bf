// The two interfaces of a media player on the session bus, as MPRIS 2.2 names and types them.
#pragma once

#include "desktop/media_control.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>

namespace kestrune {

inline constexpr auto mprisPath = "/org/mpris/MediaPlayer2";
inline constexpr auto mprisInterface = "org.mpris.MediaPlayer2";
inline constexpr auto mprisPlayerInterface = "org.mpris.MediaPlayer2.Player";

// The changed properties under their names on the bus.
QVariantMap MprisPlayerProperties(const MediaState& state, MediaProperties which);

// The program as such. Slots and properties are called by the bus, on the window thread.
class MprisRoot : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ CanQuit)
    Q_PROPERTY(bool CanRaise READ CanRaise)
    Q_PROPERTY(bool HasTrackList READ HasTrackList)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ SupportedUriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ SupportedMimeTypes)
public:
    MprisRoot(MediaControl& control, QObject* parent);

    bool CanQuit() const { return true; }
    bool CanRaise() const { return true; }
    bool HasTrackList() const { return false; }
    QString Identity() const { return QStringLiteral("Kestrune"); }
    QString DesktopEntry() const { return QStringLiteral("kestrune"); }
    QStringList SupportedUriSchemes() const { return {QStringLiteral("file")}; }
    QStringList SupportedMimeTypes() const;

public slots:
    void Raise();
    void Quit();

private:
    MediaControl& control_;
};

// The player. A command is answered at once and carried out behind the call, since it may open a box.
class MprisPlayer : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(QString LoopStatus READ LoopStatus WRITE SetLoopStatus)
    Q_PROPERTY(double Rate READ Rate WRITE SetRate)
    Q_PROPERTY(bool Shuffle READ Shuffle WRITE SetShuffle)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(double Volume READ Volume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(double MinimumRate READ Rate)
    Q_PROPERTY(double MaximumRate READ Rate)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious)
    Q_PROPERTY(bool CanPlay READ CanPlay)
    Q_PROPERTY(bool CanPause READ CanPause)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl)
public:
    MprisPlayer(MediaControl& control, const QDBusConnection& bus, QObject* parent);

    QString PlaybackStatus() const;
    QString LoopStatus() const;
    void SetLoopStatus(const QString& loop);
    double Rate() const { return 1.0; }
    // The one rate is 1; asking for 0 means a pause.
    void SetRate(double rate);
    bool Shuffle() const { return control_.State().shuffle; }
    void SetShuffle(bool shuffle) { control_.SetShuffle(shuffle); }
    QVariantMap Metadata() const;
    double Volume() const;
    void SetVolume(double fraction) { control_.SetVolume(fraction); }
    qlonglong Position() const { return control_.PositionUs(); }
    bool CanGoNext() const { return control_.State().canGoNext; }
    bool CanGoPrevious() const { return control_.State().canGoPrevious; }
    bool CanPlay() const { return control_.State().canPlay; }
    bool CanPause() const { return control_.State().canPause; }
    bool CanSeek() const { return control_.State().canSeek; }
    bool CanControl() const { return true; }

public slots:
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Next();
    void Previous();
    void Seek(qlonglong Offset);
    void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    // Answers with an error what cannot be opened.
    void OpenUri(const QString& Uri, const QDBusMessage& message);

signals:
    void Seeked(qlonglong Position);

private:
    template <typename Command>
    void Later(Command command);

    MediaControl& control_;
    QDBusConnection bus_;
};

} // namespace kestrune
