#include "desktop/mpris_service.h"

#include "app/failure_log.h"
#include "desktop/mpris_adaptors.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>

namespace kestrune {

namespace {

const QString serviceName = QStringLiteral("org.mpris.MediaPlayer2.kestrune");

} // namespace

MprisService::MprisService(MediaControl& control, QObject* parent)
    : QObject(parent), control_(control), bus_(QString()) {}

MprisService::~MprisService() {
    if (!name_.isEmpty()) {
        bus_.unregisterService(name_);
        bus_.unregisterObject(QString::fromLatin1(mprisPath));
    }
}

bool MprisService::Start(const QDBusConnection& bus) {
    if (!bus.isConnected()) {
        qCWarning(logDesktop) << "no session bus:" << bus.lastError().message();
        return false;
    }
    bus_ = bus;
    new MprisRoot(control_, this);
    new MprisPlayer(control_, bus_, this);
    // The object first: whoever sees the name asks it at once.
    if (!bus_.registerObject(QString::fromLatin1(mprisPath), this, QDBusConnection::ExportAdaptors)) {
        qCWarning(logDesktop) << "the object of the player cannot be put on the bus";
        return false;
    }
    const QString ofThisProcess =
        serviceName + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
    for (const QString& name : {serviceName, ofThisProcess}) {
        if (bus_.registerService(name)) {
            name_ = name;
            connect(&control_, &MediaControl::Changed, this, &MprisService::TellChanges);
            control_.Watch();
            return true;
        }
        qCWarning(logDesktop) << name << "is taken:" << bus_.lastError().message();
    }
    bus_.unregisterObject(QString::fromLatin1(mprisPath));
    return false;
}

void MprisService::TellChanges(const MediaState& now, MediaProperties which) {
    QDBusMessage changed = QDBusMessage::createSignal(QString::fromLatin1(mprisPath),
                                                      QStringLiteral("org.freedesktop.DBus.Properties"),
                                                      QStringLiteral("PropertiesChanged"));
    changed << QString::fromLatin1(mprisPlayerInterface) << MprisPlayerProperties(now, which)
            << QStringList();
    bus_.send(changed);
}

} // namespace kestrune
