// Keeps the signals of a player that arrive over the bus.
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace kestrune {

class BusListener : public QObject {
    Q_OBJECT
public:
    struct Change {
        QString interface;
        QVariantMap properties;
        QStringList invalidated;
    };
    QList<Change> changes;
    QList<qlonglong> seeked;

    bool Listen(QDBusConnection bus) {
        const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
        return bus.connect(QString(), path, QStringLiteral("org.freedesktop.DBus.Properties"),
                           QStringLiteral("PropertiesChanged"), this,
                           SLOT(Changed(QString, QVariantMap, QStringList))) &&
               bus.connect(QString(), path, QStringLiteral("org.mpris.MediaPlayer2.Player"),
                           QStringLiteral("Seeked"), this, SLOT(Seeked(qlonglong)));
    }

public slots:
    void Changed(const QString& interface, const QVariantMap& properties, const QStringList& invalidated) {
        changes.append({interface, properties, invalidated});
    }
    void Seeked(qlonglong position) { seeked.append(position); }
};

} // namespace kestrune
