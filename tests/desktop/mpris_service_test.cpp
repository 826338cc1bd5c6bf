// The player on a bus: real calls from another connection, real signals.
#include "desktop/mpris_service.h"

#include "bus_listener.h"
#include "desktop/media_control_fixture.h"
#include "private_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QThread>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr int patienceMs = 5000;
const QString wellKnown = QStringLiteral("org.mpris.MediaPlayer2.kestrune");
const QString root = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

class MprisServiceTest : public MediaControlFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus.Start());
        ASSERT_TRUE(Connect(QStringLiteral("service")).isConnected());
        ASSERT_TRUE(Connect(QStringLiteral("client")).isConnected());
        ASSERT_TRUE(listener.Listen(Client()));
    }
    void TearDown() override {
        service.reset();
        for (const QString& name : connections) {
            QDBusConnection::disconnectFromBus(name);
        }
    }
    QDBusConnection Connect(const QString& name) {
        connections.append(name);
        return QDBusConnection::connectToBus(bus.Address(), name);
    }
    QDBusConnection Client() const { return QDBusConnection(QStringLiteral("client")); }
    bool Start() { return service->Start(QDBusConnection(QStringLiteral("service"))); }

    // Runs events until the condition holds; false when it does not in time.
    template <typename Condition>
    bool Wait(Condition condition) {
        QElapsedTimer since;
        since.start();
        while (!condition()) {
            if (since.elapsed() > patienceMs) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            QThread::msleep(1);
        }
        return true;
    }
    QDBusPendingCall Send(const QString& interface, const QString& method, const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            wellKnown, QStringLiteral("/org/mpris/MediaPlayer2"), interface, method);
        call.setArguments(arguments);
        return Client().asyncCall(call, patienceMs);
    }
    QDBusMessage Call(const QString& interface, const QString& method, const QVariantList& arguments = {}) {
        const QDBusPendingCall pending = Send(interface, method, arguments);
        EXPECT_TRUE(Wait([&] { return pending.isFinished(); })) << method.toStdString();
        return pending.reply();
    }
    // A command of the player. What it does is done when this returns.
    void Command(const char* method, const QVariantList& arguments = {}) {
        const QDBusMessage reply = Call(playerInterface, QString::fromLatin1(method), arguments);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage)
            << method << ": " << reply.errorMessage().toStdString();
        Get(playerInterface, "PlaybackStatus");
    }
    QVariant Get(const QString& interface, const char* name) {
        const QDBusMessage reply =
            Call(properties, QStringLiteral("Get"), {interface, QString::fromLatin1(name)});
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << name;
        return reply.arguments().isEmpty() ? QVariant()
                                           : reply.arguments().first().value<QDBusVariant>().variant();
    }
    QDBusMessage Set(const char* name, const QVariant& value) {
        return Call(properties, QStringLiteral("Set"),
                    {playerInterface, QString::fromLatin1(name), QVariant::fromValue(QDBusVariant(value))});
    }
    static QVariantMap MapOf(const QVariant& value) {
        return value.canConvert<QDBusArgument>() ? qdbus_cast<QVariantMap>(value.value<QDBusArgument>())
                                                 : value.toMap();
    }
    QVariantMap Metadata() { return MapOf(Get(playerInterface, "Metadata")); }
    // Names of what the only change told, after waiting for it.
    QStringList OnlyChange() {
        EXPECT_TRUE(Wait([this] { return !listener.changes.isEmpty(); }));
        EXPECT_EQ(listener.changes.size(), 1);
        return listener.changes.isEmpty() ? QStringList() : listener.changes.first().properties.keys();
    }

    PrivateBus bus;
    QStringList connections;
    BusListener listener;
    std::unique_ptr<MprisService> service = std::make_unique<MprisService>(control);
};

TEST_F(MprisServiceTest, TellsWhatTheProgramIs) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(service->Name(), wellKnown);
    EXPECT_EQ(Get(root, "Identity"), QVariant(QStringLiteral("Kestrune")));
    EXPECT_EQ(Get(root, "DesktopEntry"), QVariant(QStringLiteral("kestrune")));
    EXPECT_EQ(Get(root, "CanQuit"), QVariant(true));
    EXPECT_EQ(Get(root, "CanRaise"), QVariant(true));
    EXPECT_EQ(Get(root, "HasTrackList"), QVariant(false));
    EXPECT_EQ(Get(root, "SupportedUriSchemes"), QVariant(QStringList(QStringLiteral("file"))));
    const QStringList types = Get(root, "SupportedMimeTypes").toStringList();
    EXPECT_TRUE(types.contains(QStringLiteral("audio/mpeg")));
    EXPECT_TRUE(types.contains(QStringLiteral("audio/x-wav")));
}

TEST_F(MprisServiceTest, IntrospectionNamesBothInterfacesWithTheirTypes) {
    ASSERT_TRUE(Start());
    const QString xml =
        Call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"))
            .arguments()
            .value(0)
            .toString();
    for (const char* piece :
         {"<interface name=\"org.mpris.MediaPlayer2\">", "<interface name=\"org.mpris.MediaPlayer2.Player\">",
          "<property name=\"Position\" type=\"x\" access=\"read\"/>",
          "<property name=\"Volume\" type=\"d\" access=\"readwrite\"/>",
          "<property name=\"Metadata\" type=\"a{sv}\" access=\"read\"", "<signal name=\"Seeked\">",
          "<arg name=\"TrackId\" type=\"o\" direction=\"in\"/>"}) {
        EXPECT_TRUE(xml.contains(QLatin1String(piece))) << piece << "\n" << xml.toStdString();
    }
}

TEST_F(MprisServiceTest, AllPropertiesOfAStoppedPlayer) {
    Load(2);
    knob.SetVolume(65535);
    ASSERT_TRUE(Start());
    QVariantMap all =
        MapOf(Call(properties, QStringLiteral("GetAll"), {playerInterface}).arguments().value(0));
    EXPECT_THAT(MapOf(all.take(QStringLiteral("Metadata"))), IsEmpty());
    EXPECT_EQ(all, (QVariantMap{{"PlaybackStatus", "Stopped"},
                                {"LoopStatus", "Playlist"},
                                {"Rate", 1.0},
                                {"Shuffle", false},
                                {"Volume", 1.0},
                                {"Position", qlonglong(0)},
                                {"MinimumRate", 1.0},
                                {"MaximumRate", 1.0},
                                {"CanGoNext", false},
                                {"CanGoPrevious", false},
                                {"CanPlay", true},
                                {"CanPause", false},
                                {"CanSeek", false},
                                {"CanControl", true}}));
}

TEST_F(MprisServiceTest, CommandsReachTheTransport) {
    Load(3);
    ASSERT_TRUE(Start());
    Command("Play");
    EXPECT_EQ(Playing(), "a.wav");
    Command("Pause");
    EXPECT_EQ(Get(playerInterface, "PlaybackStatus"), QVariant("Paused"));
    Command("PlayPause");
    EXPECT_EQ(Get(playerInterface, "PlaybackStatus"), QVariant("Playing"));
    Command("Next");
    EXPECT_EQ(Playing(), "b.wav");
    Command("Previous");
    EXPECT_EQ(Playing(), "a.wav");
    Command("Stop");
    EXPECT_EQ(Get(playerInterface, "PlaybackStatus"), QVariant("Stopped"));
    EXPECT_EQ(lamp, 0);
}

TEST_F(MprisServiceTest, ACommandIsAnsweredBeforeItIsThrough) {
    Load(1);
    ASSERT_TRUE(Start());
    const QDBusPendingCall play = Send(playerInterface, QStringLiteral("Play"), {});
    bool answeredFirst = false;
    QObject::connect(&transport, &Transport::NameShown, &transport,
                     [&] { answeredFirst = Wait([&] { return play.isFinished(); }); });
    ASSERT_TRUE(Wait([this] { return transport.State().IsPlaying; }));
    EXPECT_TRUE(answeredFirst) << "a box in the middle of a command would keep the caller waiting";
}

TEST_F(MprisServiceTest, MetadataOfWhatPlays) {
    Load(1);
    audioInfo.files[rows.FullPath(1)].artist = QStringLiteral("Someone");
    ASSERT_TRUE(Start());
    Command("Play");
    const QVariantMap metadata = Metadata();
    EXPECT_EQ(metadata.value("mpris:trackid").value<QDBusObjectPath>().path(), control.State().track.id);
    EXPECT_EQ(metadata.value("mpris:length").typeId(), QMetaType::LongLong);
    EXPECT_EQ(metadata.value("mpris:length"), QVariant(qlonglong(10000000)));
    EXPECT_EQ(metadata.value("xesam:title"), QVariant("a.wav"));
    EXPECT_EQ(metadata.value("xesam:artist"), QVariant(QStringList("Someone")));
    EXPECT_EQ(metadata.value("xesam:url"), QVariant(QUrl::fromLocalFile(rows.FullPath(1)).toString()));
    EXPECT_FALSE(metadata.contains("xesam:album"));
}

TEST_F(MprisServiceTest, ChangesAreToldWithWhatChangedOnly) {
    Load(2);
    ASSERT_TRUE(Start());
    Command("Play");
    EXPECT_THAT(OnlyChange(), UnorderedElementsAre("PlaybackStatus", "Metadata", "CanGoNext", "CanGoPrevious",
                                                   "CanPause", "CanSeek"));
    EXPECT_EQ(listener.changes.first().interface, playerInterface);
    EXPECT_THAT(listener.changes.first().invalidated, IsEmpty());
    EXPECT_EQ(listener.changes.first().properties.value("PlaybackStatus"), QVariant("Playing"));
    listener.changes.clear();
    Command("Pause");
    EXPECT_THAT(OnlyChange(), ElementsAre("PlaybackStatus"));
    listener.changes.clear();
    Command("PlayPause");
    OnlyChange();
    listener.changes.clear();
    Command("Next");
    EXPECT_THAT(OnlyChange(), ElementsAre("Metadata"));
    const QVariantMap metadata = MapOf(listener.changes.first().properties.value("Metadata"));
    EXPECT_EQ(metadata.value("xesam:title"), QVariant("b.wav"));
}

TEST_F(MprisServiceTest, SeeksAreTold) {
    Load(1);
    ASSERT_TRUE(Start());
    Command("Play");
    Command("Seek", {qlonglong(3000000)});
    ASSERT_TRUE(Wait([this] { return !listener.seeked.isEmpty(); }));
    const QVariant id = QVariant::fromValue(QDBusObjectPath(control.State().track.id));
    Command("SetPosition", {id, qlonglong(7500000)});
    ASSERT_TRUE(Wait([this] { return listener.seeked.size() == 2; }));
    EXPECT_THAT(listener.seeked, ElementsAre(3000000, 7500000));
    EXPECT_EQ(Get(playerInterface, "Position"), QVariant(qlonglong(7500000)));
    const QVariant other = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/some/other/track")));
    Command("SetPosition", {other, qlonglong(1000000)});
    EXPECT_EQ(Get(playerInterface, "Position"), QVariant(qlonglong(7500000)));
}

TEST_F(MprisServiceTest, TheVolumeTurnsTheKnob) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Set("Volume", 0.5).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(knob.Volume(), 32768);
    EXPECT_THAT(OnlyChange(), ElementsAre("Volume"));
    EXPECT_NEAR(listener.changes.first().properties.value("Volume").toDouble(), 0.5, 1e-5);
    Set("Volume", -3.0);
    EXPECT_EQ(knob.Volume(), 0);
    EXPECT_EQ(Set("Volume", QStringLiteral("loud")).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(knob.Volume(), 0);
}

TEST_F(MprisServiceTest, ModesAndRateCanBeSet) {
    Load(1);
    ASSERT_TRUE(Start());
    Set("LoopStatus", QStringLiteral("Track"));
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat));
    EXPECT_EQ(Get(playerInterface, "LoopStatus"), QVariant("Track"));
    Set("LoopStatus", QStringLiteral("sideways"));
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat));
    Set("Shuffle", true);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Shuffle));
    EXPECT_EQ(Get(playerInterface, "Shuffle"), QVariant(true));
    Command("Play");
    Set("Rate", 2.0);
    EXPECT_EQ(Get(playerInterface, "PlaybackStatus"), QVariant("Playing"));
    EXPECT_EQ(Get(playerInterface, "Rate"), QVariant(1.0));
    Set("Rate", 0.0);
    EXPECT_EQ(Get(playerInterface, "PlaybackStatus"), QVariant("Paused"));
}

TEST_F(MprisServiceTest, AFileIsOpenedAndAWrongOneAnsweredWithAnError) {
    Load(1);
    const QString uri = MakeLoose(QStringLiteral("loose.wav"));
    ASSERT_TRUE(Start());
    Command("OpenUri", {uri});
    EXPECT_EQ(Playing(), "loose.wav");
    const QDBusMessage refused =
        Call(playerInterface, QStringLiteral("OpenUri"), {QStringLiteral("http://localhost/loose.wav")});
    EXPECT_EQ(refused.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(refused.errorName(), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(rows.Count(), 2);
}

TEST_F(MprisServiceTest, RaiseAndQuitAreHandedOn) {
    QStringList asked;
    QObject::connect(&control, &MediaControl::RaiseRequested, &control, [&] { asked << "Raise"; });
    QObject::connect(&control, &MediaControl::QuitRequested, &control, [&] { asked << "Quit"; });
    ASSERT_TRUE(Start());
    Call(root, QStringLiteral("Raise"));
    Call(root, QStringLiteral("Quit"));
    EXPECT_TRUE(Wait([&] { return asked.size() == 2; }));
    EXPECT_THAT(asked, ElementsAre("Raise", "Quit"));
}

TEST_F(MprisServiceTest, ANameThatIsTakenGetsTheProcessIdBehindIt) {
    ASSERT_TRUE(Client().registerService(wellKnown));
    ASSERT_TRUE(Start());
    EXPECT_EQ(service->Name(),
              wellKnown + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid()));
}

TEST_F(MprisServiceTest, TheNameIsFreeAfterwards) {
    ASSERT_TRUE(Start());
    service.reset();
    EXPECT_TRUE(Client().registerService(wellKnown));
}

TEST_F(MprisServiceTest, WhenTheBusGoesTheProgramGoesOn) {
    Load(1);
    ASSERT_TRUE(Start());
    bus.Kill();
    ASSERT_TRUE(Wait([this] { return !Client().isConnected(); }));
    Play(1);
    Turn();
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
    control.SeekBy(1000000);
    EXPECT_EQ(control.PositionUs(), 1000000);
}

QStringList messages;

class MprisWithoutBusTest : public MediaControlFixture {
protected:
    void SetUp() override {
        messages.clear();
        former =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& text) {
                messages << QString::fromLatin1(context.category) + QStringLiteral(": ") + text;
            });
    }
    void TearDown() override {
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(former);
        QDBusConnection::disconnectFromBus(QStringLiteral("nowhere"));
    }
    bool Start() {
        const QString address = QStringLiteral("unix:path=") + PathOf(QStringLiteral("no-bus"));
        return MprisService(control).Start(QDBusConnection::connectToBus(address, QStringLiteral("nowhere")));
    }

private:
    QtMessageHandler former = nullptr;
};

TEST_F(MprisWithoutBusTest, StartsInSilence) {
    EXPECT_FALSE(Start());
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(MprisWithoutBusTest, TheLogSaysWhyWhereItIsWanted) {
    QLoggingCategory::setFilterRules(QStringLiteral("kestrune.desktop=true"));
    EXPECT_FALSE(Start());
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages.first().startsWith(QLatin1String("kestrune.desktop: no session bus")))
        << messages.first().toStdString();
}

} // namespace
} // namespace kestrune
