#include "main_window/main_controls_builder.h"

#include "main_window/main_window_access.h"
#include "playback/position.h"
#include "skin/skin_colours.h"
#include "skin/window_kit.h"

namespace kestrune {

namespace {

constexpr int smallFontPixels = 10;

QRect At(const QPoint& corner, const QSize& size) {
    return {corner, size};
}

class Builder {
public:
    Builder(QWidget* window, const MainControlParts& parts)
        : window_(window),
          parts_(parts),
          kit_(window, parts.pictures.Strip(), &parts.pictures.Off(), parts.hover) {}

    MainControls Make() {
        InstallMainWindowAccess();
        MakeTitle();
        MakeToolBar();
        MakeClock();
        MakeDisplay();
        MakeTransport();
        MakeVolume();
        MakeList();
        OrderTabs();
        return controls_;
    }

private:
    PictureLabel* Cut(const QString& name, const QRect& place) {
        auto* label = Put(new PictureLabel(parts_.pictures.Strip(), window_), name, place);
        // The mouse goes to what lies under it, which may be a button.
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        return label;
    }

    QLabel* Text(const QString& name, const QString& text, const QRect& place, const QColor& colour,
                 int pixels = bodyFontPixels) {
        auto* label = Put(new QLabel(text, window_), name, place);
        SetInk(label, colour, pixels);
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        return label;
    }

    void MakeTitle();
    void MakeToolBar();
    void MakeClock();
    void MakeDisplay();
    void MakeTransport();
    void MakeVolume();
    void MakeList();
    void MakeTotals();
    void OrderTabs();

    QWidget* window_;
    MainControlParts parts_;
    WindowKit kit_;
    MainControls controls_{};
};

void Builder::MakeTitle() {
    controls_.LabelTitle = Put(new QWidget(window_), QStringLiteral("LabelTitle"), layout::title);
    controls_.LabelCaption = Text(QStringLiteral("LabelCaption"), QStringLiteral("Kestrune"), layout::caption,
                                  colours::textOnBody, titleFontPixels);
    SetInk(controls_.LabelCaption, colours::textOnBody, titleFontPixels, QFont::DemiBold);
    controls_.LabelName =
        Text(QStringLiteral("LabelName"), QString(),
             layout::caption.adjusted(layout::caption.width(), 0, 0, 0), colours::textMuted);
    for (QLabel* label : {controls_.LabelCaption, controls_.LabelName}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    const int group = parts_.hover.AddGroup();
    const std::array<QString, 2> tips = {QObject::tr("Close"), QObject::tr("Minimise")};
    for (size_t i = 0; i < tips.size(); ++i) {
        controls_.ImageWin[i] = kit_.Picture(Indexed(QStringLiteral("ImageWin"), i), tips[i],
                                             layout::ImageWin[i], group, static_cast<int>(i));
    }
    const std::array<QString, menuLabelCount> captions = {
        QObject::tr("&File"),    QObject::tr("&Play"),  QObject::tr("&Rip"),  QObject::tr("&Burn"),
        QObject::tr("&Convert"), QObject::tr("&Sites"), QObject::tr("&Help"), QObject::tr("&Options")};
    int left = layout::menuLeft;
    for (size_t i = 0; i < captions.size(); ++i) {
        controls_.LabelMenu[i] =
            Put(new MenuLabel(captions[i], window_), Indexed(QStringLiteral("LabelMenu"), i),
                {left, layout::menuTop, layout::menuWidths[i], layout::menuHeight});
        QString name = captions[i];
        name.remove(u'&');
        const bool opensMenu = i != 2 && i != 5; // Rip and Sites open windows
        controls_.LabelMenu[i]->SetOpensMenu(opensMenu);
        controls_.LabelMenu[i]->setAccessibleName(opensMenu ? QObject::tr("%1 menu").arg(name) : name);
        left += layout::menuWidths[i];
    }
}

void Builder::MakeToolBar() {
    const int group = parts_.hover.AddGroup();
    const std::array<QString, toolBarItems> tips = {
        QString(), QObject::tr("Rip an audio CD"), QObject::tr("Write an audio CD"),
        QObject::tr("Convert audio files"), QObject::tr("Music sites")};
    for (size_t i = 0; i < tips.size(); ++i) {
        const QRect place = At(layout::ImageToolBar[i], layout::toolCell);
        const QPoint first(layout::toolFrameLefts[0], layout::toolFrameTops[i]);
        controls_.ImageToolBar[i] = kit_.Picture(Indexed(QStringLiteral("ImageToolBar"), i), tips[i],
                                                 {place, first, first}, group, static_cast<int>(i));
        controls_.toolFrames[i] = Cut(Indexed(QStringLiteral("toolFrame"), i), place);
        controls_.toolFrames[i]->setVisible(i == 0);
    }
    // The first one only moves; it is no button.
    controls_.ImageToolBar[0]->hide();
    controls_.ImageToolBar[0]->setFocusPolicy(Qt::NoFocus);
    controls_.LabelFormat = Text(QStringLiteral("LabelFormat"), QString(), layout::formatLine,
                                 colours::textOnGlass, smallFontPixels);
}

void Builder::MakeClock() {
    for (size_t i = 0; i < controls_.ImageData.size(); ++i) {
        controls_.ImageData[i] =
            Cut(Indexed(QStringLiteral("ImageData"), i), At(layout::ImageData[i], layout::bigDigit));
    }
    for (size_t i = 0; i < controls_.ImageData1.size(); ++i) {
        controls_.ImageData1[i] =
            Cut(Indexed(QStringLiteral("ImageData1"), i), At(layout::ImageData1[i], layout::smallDigit));
    }
    const std::array<QString, stateLampCount> states = {QObject::tr("stopped"), QObject::tr("playing"),
                                                        QObject::tr("paused")};
    for (size_t i = 0; i < states.size(); ++i) {
        controls_.ImageSmall[i] = Cut(Indexed(QStringLiteral("ImageSmall"), i), layout::ImageSmall[i]);
        controls_.ImageSmall[i]->setAccessibleName(states[i]);
        controls_.ImageSmall[i]->SetCut(At(layout::ImageSmallLit[i], layout::ImageSmall[i].size()));
        controls_.ImageSmall[i]->setVisible(i == 0);
    }
    controls_.Image44100 = Cut(QStringLiteral("Image44100"), layout::Image44100);
    controls_.ImageKBPS = Cut(QStringLiteral("ImageKBPS"), layout::ImageKBPS);
}

void Builder::MakeDisplay() {
    for (size_t i = 0; i < controls_.PictureClp.size(); ++i) {
        controls_.PictureClp[i] = Cut(Indexed(QStringLiteral("PictureClp"), i), {});
    }
    controls_.KSTAudioDisplay1 = Put(new AudioDisplayView(parts_.display, window_),
                                     QStringLiteral("KSTAudioDisplay1"), layout::display);
}

void Builder::MakeTransport() {
    const int playGroup = parts_.hover.AddGroup();
    const std::array<QString, transportButtonCount> buttons = {QObject::tr("Previous"), QObject::tr("Pause"),
                                                               QObject::tr("Play"),     QObject::tr("Stop"),
                                                               QObject::tr("Record"),   QObject::tr("Next")};
    for (size_t i = 0; i < buttons.size(); ++i) {
        controls_.ImagePlayButton[i] =
            kit_.Picture(Indexed(QStringLiteral("ImagePlayButton"), i), buttons[i],
                         layout::ImagePlayButton[i], playGroup, static_cast<int>(i));
    }
    const int modeGroup = parts_.hover.AddGroup();
    const std::array<QString, 3> modes = {QObject::tr("Continuous"), QObject::tr("Shuffle"),
                                          QObject::tr("Repeat")};
    for (size_t i = 0; i < modes.size(); ++i) {
        controls_.ImageRepeatModeBut[i] =
            kit_.Picture(Indexed(QStringLiteral("ImageRepeatModeBut"), i), modes[i],
                         layout::ImageRepeatModeBut[i], modeGroup, static_cast<int>(i));
        controls_.ImageRepeatModeBut[i]->setCheckable(true);
    }
    const PositionPictures pictures{parts_.pictures.Strip(), layout::positionLineInStrip,
                                    layout::positionLineHeight, layout::thumbInStrip,
                                    layout::thumbHeldInStrip};
    controls_.positionBar =
        Put(new PositionBar(pictures, window_), QStringLiteral("PositionBar"), layout::positionBar);
    controls_.positionBar->setAccessibleName(QObject::tr("Position"));
}

void Builder::MakeVolume() {
    KnobPictures pictures{parts_.pictures.Strip(), layout::volumeDotInStrip, {}, {}};
    for (size_t i = 0; i < layout::ImageVol.size(); ++i) {
        pictures.markPlaces[i] = layout::ImageVol[i];
        pictures.litMarks[i] = layout::ImageVolLit[i];
    }
    controls_.volumeKnob = new VolumeKnobView(parts_.knob, KnobGeometry{}, pictures, window_);
}

void Builder::MakeList() {
    const int panelGroup = parts_.hover.AddGroup();
    controls_.ImageChgLstBnd =
        kit_.Picture(QStringLiteral("ImageChgLstBnd"), QObject::tr("Playlist / Equalizer"),
                     layout::ImageChgLstBnd, panelGroup, 0);
    controls_.ImageColour = kit_.Picture(QStringLiteral("ImageColour"), QObject::tr("Display colours"),
                                         layout::ImageColour, panelGroup, 1);
    for (ImageButton* button : {controls_.ImageChgLstBnd, controls_.ImageColour}) {
        button->setCheckable(true);
    }
    const int listGroup = parts_.hover.AddGroup();
    const std::array<QString, listButtonCount> buttons = {
        QObject::tr("Add audio files"), QObject::tr("Delete selected files"),
        QObject::tr("Open playlist"),   QObject::tr("Save playlist"),
        QObject::tr("Move up"),         QObject::tr("Move down")};
    controls_.ListViewPlaylist =
        Put(new PlaylistView(parts_.rows, window_), QStringLiteral("ListViewPlaylist"), layout::list);
    controls_.ListViewPlaylist->setAccessibleName(QObject::tr("Playlist"));
    controls_.listScrollBar = Put(new PlaylistScrollBar(*controls_.ListViewPlaylist, window_),
                                  QStringLiteral("PlaylistScrollBar"), layout::listScrollBar);
    controls_.KSTEqualizer21 =
        Put(new EqualizerPanel(window_), QStringLiteral("KSTEqualizer21"), layout::panel);
    AudioDisplay* display = &parts_.display;
    controls_.colourPanel =
        Put(new ColourPanel([display](int number) { return display->Property(number); }, {}, window_),
            QStringLiteral("ColourPanel"), layout::panel);
    controls_.KSTEqualizer21->hide();
    controls_.colourPanel->hide();
    for (size_t i = 0; i < buttons.size(); ++i) {
        controls_.ImageListCmd[i] = kit_.Picture(Indexed(QStringLiteral("ImageListCmd"), i), buttons[i],
                                                 layout::ImageListCmd[i], listGroup, static_cast<int>(i));
    }
    MakeTotals();
}

void Builder::MakeTotals() {
    for (size_t i = 0; i < controls_.LabelSeltal.size(); ++i) {
        controls_.LabelSeltal[i] =
            Text(Indexed(QStringLiteral("LabelSeltal"), i), QObject::tr(" 0:00 (0.0 MB)"),
                 {layout::totalsRight - 80, layout::totalsTop, 80, layout::totalsHeight},
                 i == 0 ? colours::textOnBody : colours::textMuted);
    }
    controls_.LabelSeltal[0]->setToolTip(QObject::tr("Total"));
    controls_.LabelSeltal[1]->setToolTip(QObject::tr("Selected Files"));
    controls_.PictureSelToal = Put(new SmallTotalView(parts_.pictures.Strip(), window_),
                                   QStringLiteral("PictureSelToal"), layout::PictureSelToal);
    controls_.LabelTemp = Text(QStringLiteral("LabelTemp"), QString(), {}, colours::textOnBody);
    controls_.LabelTemp->hide();
}

// From the list, where the keys are at the start, round the window as the eye goes.
void Builder::OrderTabs() {
    QList<QWidget*> order = {controls_.ListViewPlaylist, controls_.KSTEqualizer21, controls_.colourPanel};
    const auto add = [&order](const auto& widgets) {
        for (QWidget* widget : widgets) {
            order.append(widget);
        }
    };
    add(controls_.ImageListCmd);
    add(controls_.LabelMenu);
    add(controls_.ImageToolBar);
    order.append(controls_.KSTAudioDisplay1);
    add(controls_.ImageRepeatModeBut);
    for (const int button : {ButtonPrevious, ButtonPlay, ButtonPause, ButtonStop, ButtonNext}) {
        order.append(controls_.ImagePlayButton[static_cast<size_t>(button)]);
    }
    order.append(controls_.volumeKnob);
    for (size_t i = 0; i < layout::ImageVol.size(); ++i) {
        order.append(window_->findChild<QWidget*>(Indexed(QStringLiteral("ImageVol"), i)));
    }
    order.append(controls_.ImagePlayButton[ButtonRecord]);
    order.append({controls_.ImageChgLstBnd, controls_.ImageColour, controls_.positionBar,
                  controls_.ImageWin[1], controls_.ImageWin[0]});
    kestrune::OrderTabs(order);
}

} // namespace

MainControls MakeMainControls(QWidget* window, const MainControlParts& parts) {
    return Builder(window, parts).Make();
}

} // namespace kestrune
