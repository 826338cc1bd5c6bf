// Puts the player on the session bus, for media keys and the desktop's player controls.
#pragma once

#include "desktop/media_control.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace kestrune {

// The control must outlive the service. Window thread.
class MprisService : public QObject {
    Q_OBJECT
public:
    explicit MprisService(MediaControl& control, QObject* parent = nullptr);
    ~MprisService() override;
    MprisService(const MprisService&) = delete;
    MprisService& operator=(const MprisService&) = delete;

    // Takes the name org.mpris.MediaPlayer2.kestrune, or the same with ".instance" and the process id where
    // another program has it. False when there is no bus or it refuses; the program goes on without, and the
    // log category kestrune.desktop says why. Blocks for a few messages to the bus. To be called once.
    bool Start(const QDBusConnection& bus);
    // The name on the bus; empty unless Start was successful.
    QString Name() const { return name_; }

private:
    void TellChanges(const MediaState& now, MediaProperties which);

    MediaControl& control_;
    QDBusConnection bus_;
    QString name_;
};

} // namespace kestrune
