#include "app/main_controls.h"

#include "playback/position.h"

namespace kestrune {

namespace {

struct Place {
    int left;
    int top;
    int width;
    int height;
};

QString Indexed(const QString& name, size_t index) {
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

template <typename Widget>
Widget* Put(Widget* widget, const QString& name, Place place) {
    widget->setObjectName(name);
    widget->setGeometry(place.left, place.top, place.width, place.height);
    return widget;
}

QPushButton* Button(QWidget* window, const QString& name, const QString& text, const QString& accessibleName,
                    Place place) {
    auto* button = Put(new QPushButton(text, window), name, place);
    button->setAccessibleName(accessibleName);
    button->setToolTip(accessibleName);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QLabel* Label(QWidget* window, const QString& name, const QString& text, Place place) {
    auto* label = Put(new QLabel(text, window), name, place);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

void MakeTitle(QWidget* window, MainControls& controls) {
    controls.LabelCaption =
        Label(window, QStringLiteral("LabelCaption"), QStringLiteral("Kestrune"), {16, 6, 62, 18});
    controls.LabelName = Label(window, QStringLiteral("LabelName"), QString(), {78, 6, 0, 18});
    controls.LabelName->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    controls.ImageWin[0] = Button(window, QStringLiteral("ImageWin(0)"), QStringLiteral("x"),
                                  QObject::tr("Close"), {361, 6, 18, 18});
    controls.ImageWin[1] = Button(window, QStringLiteral("ImageWin(1)"), QStringLiteral("_"),
                                  QObject::tr("Minimise"), {340, 6, 18, 18});
    const std::array<QString, menuLabelCount> captions = {
        QStringLiteral("&File"), QStringLiteral("&Play"),    QStringLiteral("&Rip"),
        QStringLiteral("&Burn"), QStringLiteral("&Convert"), QStringLiteral("&Sites"),
        QStringLiteral("&Help"), QStringLiteral("&Options")};
    constexpr int menuWidth = 45;
    for (size_t i = 0; i < captions.size(); ++i) {
        QString name = captions[i];
        name.remove(u'&');
        controls.LabelMenu[i] = Button(window, Indexed(QStringLiteral("LabelMenu"), i), name, name,
                                       {16 + static_cast<int>(i) * menuWidth, 28, menuWidth, 20});
        controls.LabelMenu[i]->setFlat(true);
    }
}

void MakeTransport(QWidget* window, MainControls& controls) {
    const std::array<std::pair<QString, QString>, transportButtonCount> buttons = {{
        {QStringLiteral("|<"), QObject::tr("Previous")},
        {QStringLiteral("||"), QObject::tr("Pause")},
        {QStringLiteral(">"), QObject::tr("Play")},
        {QStringLiteral("[]"), QObject::tr("Stop")},
        {QStringLiteral("o"), QObject::tr("Record")},
        {QStringLiteral(">|"), QObject::tr("Next")},
    }};
    for (size_t i = 0; i < buttons.size(); ++i) {
        controls.ImagePlayButton[i] =
            Button(window, Indexed(QStringLiteral("ImagePlayButton"), i), buttons[i].first, buttons[i].second,
                   {16 + static_cast<int>(i) * 29, 168, 28, 28});
    }
    const std::array<QString, 3> lamps = {QObject::tr("stopped"), QObject::tr("playing"),
                                          QObject::tr("paused")};
    for (size_t i = 0; i < lamps.size(); ++i) {
        controls.ImageSmall[i] =
            Label(window, Indexed(QStringLiteral("ImageSmall"), i), lamps[i], {325, 132, 52, 16});
        controls.ImageSmall[i]->setVisible(i == 0);
    }
    const std::array<QString, 3> modes = {QStringLiteral("Continuous"), QStringLiteral("Shuffle"),
                                          QStringLiteral("Repeat")};
    for (size_t i = 0; i < modes.size(); ++i) {
        controls.ImageRepeatModeBut[i] =
            Button(window, Indexed(QStringLiteral("ImageRepeatModeBut"), i), modes[i].left(1), modes[i],
                   {285 + static_cast<int>(i) * 31, 182, 28, 22});
        controls.ImageRepeatModeBut[i]->setCheckable(true);
    }
}

void MakeDisplay(QWidget* window, MainControls& controls) {
    for (size_t i = 0; i < controls.ImageData.size(); ++i) {
        const int gap = i < 2 ? 0 : 8;
        controls.ImageData[i] = Label(window, Indexed(QStringLiteral("ImageData"), i), QStringLiteral("0"),
                                      {22 + static_cast<int>(i) * 16 + gap, 92, 14, 24});
    }
    for (size_t i = 0; i < controls.ImageData1.size(); ++i) {
        controls.ImageData1[i] = Label(window, Indexed(QStringLiteral("ImageData1"), i), QStringLiteral("0"),
                                       {102 + static_cast<int>(i) * 11, 98, 10, 18});
    }
    controls.KSTAudioDisplay1 =
        Put(new QFrame(window), QStringLiteral("KSTAudioDisplay1"), {157, 77, 162, 74});
    controls.Image44100 = Label(window, QStringLiteral("Image44100"), QString(), {325, 80, 52, 16});
    controls.ImageKBPS = Label(window, QStringLiteral("ImageKBPS"), QString(), {325, 100, 52, 16});
    controls.ListView1 = Put(new QListWidget(window), QStringLiteral("ListView1"), {157, 77, 162, 74});
    controls.ListView1->setVisible(false);
    controls.Command1 = Button(window, QStringLiteral("Command1"), QStringLiteral("Change Color"),
                               QStringLiteral("Change Color"), {157, 151, 90, 20});
    controls.Command1->setVisible(false);
}

void MakeList(QWidget* window, MainControls& controls, PlaylistRows& rows) {
    const std::array<std::pair<QString, QString>, listButtonCount> buttons = {{
        {QStringLiteral("+"), QObject::tr("Add audio files")},
        {QStringLiteral("-"), QObject::tr("Delete selected files")},
        {QStringLiteral("O"), QObject::tr("Open playlist")},
        {QStringLiteral("S"), QObject::tr("Save playlist")},
        {QStringLiteral("^"), QObject::tr("Move up")},
        {QStringLiteral("v"), QObject::tr("Move down")},
    }};
    for (size_t i = 0; i < buttons.size(); ++i) {
        controls.ImageListCmd[i] =
            Button(window, Indexed(QStringLiteral("ImageListCmd"), i), buttons[i].first, buttons[i].second,
                   {16 + static_cast<int>(i) * 25, 364, 23, 18});
    }
    controls.ListViewPlaylist =
        Put(new PlaylistView(rows, window), QStringLiteral("ListViewPlaylist"), {16, 242, 360, 119});
    controls.ListViewPlaylist->setAccessibleName(QObject::tr("Playlist"));
    controls.KSTEqualizer21 =
        Put(new EqualizerPanel(window), QStringLiteral("KSTEqualizer21"), {16, 242, 360, 119});
    controls.KSTEqualizer21->setVisible(false);
    controls.ImageChgLstBnd = Button(window, QStringLiteral("ImageChgLstBnd"), QStringLiteral("EQ"),
                                     QStringLiteral("Playlist / Equalizer"), {285, 152, 28, 22});
    for (size_t i = 0; i < controls.LabelSeltal.size(); ++i) {
        controls.LabelSeltal[i] = Label(window, Indexed(QStringLiteral("LabelSeltal"), i),
                                        QStringLiteral(" 0:00 (0.0 MB)"), {300, 365, 80, 16});
    }
    controls.LabelSeltal[0]->setToolTip(QStringLiteral("Total"));
    controls.LabelSeltal[1]->setToolTip(QStringLiteral("Selected Files"));
    controls.PictureSelToal = Label(window, QStringLiteral("PictureSelToal"), QString(), {285, 222, 92, 16});
    controls.LabelTemp = Label(window, QStringLiteral("LabelTemp"), QString(), {0, 0, 0, 0});
    controls.LabelTemp->setVisible(false);
}

} // namespace

MainControls MakeMainControls(QWidget* window, PlaylistRows& rows, VolumeKnob& knob) {
    MainControls controls{};
    MakeTitle(window, controls);
    MakeDisplay(window, controls);
    MakeTransport(window, controls);
    controls.positionBar =
        Put(new PositionBar(window), QStringLiteral("PositionBar"), {16, 226, positionBarWidth, 12});
    controls.positionBar->setAccessibleName(QObject::tr("Position"));
    controls.volumeKnob = new VolumeKnobView(knob, KnobGeometry{}, window);
    MakeList(window, controls, rows);
    return controls;
}

} // namespace kestrune
