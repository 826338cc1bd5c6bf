#include "app/frm_main.h"

#include "playback/position.h"
#include "playlist/playlist_totals.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

namespace kestrune {

namespace {

enum MenuLabel { MenuFile = 0, MenuPlay = 1, MenuOptions = 7 };
constexpr int nameGap = 10;
constexpr int repaintPeriodMs = 33;

const QString windowStyle = QStringLiteral(
    "QWidget#frmMain { background: qlineargradient(x1:0,y1:0,x2:0,y2:1, stop:0 #353A42, stop:1 #1D2025); }"
    "QLabel { color: #C3C8D2; font-size: 11px; }"
    "QPushButton { color: #C3C8D2; background: transparent; border: none; font-size: 11px; }"
    "QPushButton:hover { color: #8080ff; } QPushButton:disabled { color: #5A5F68; }"
    "QPushButton:focus { border: 1px dotted #8080ff; } QPushButton:checked { color: #8080ff; }"
    "QFrame#KSTAudioDisplay1 { background: #141414; }"
    "QLabel[clock=\"true\"] { color: #8080ff; font-size: 20px; }"
    "QLabel[ticks=\"true\"] { color: #8080ff; font-size: 13px; }");

} // namespace

FrmMain::FrmMain(const FrmMainParts& parts)
    : parts_(parts),
      controls_(MakeMainControls(this, parts_.rows, parts_.knob)),
      menus_(this, parts_.options, parts_.rows) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(parts_.state.AppTitle);
    setAttribute(Qt::WA_StyledBackground);
    for (QLabel* digit : controls_.ImageData) {
        digit->setProperty("clock", true);
    }
    for (QLabel* digit : controls_.ImageData1) {
        digit->setProperty("ticks", true);
    }
    setStyleSheet(windowStyle);
    for (const int menu : {2, 3, 4, 5, 6}) {
        controls_.LabelMenu[static_cast<size_t>(menu)]->setEnabled(false);
    }
    for (const int command : {1, 4, 5}) {
        controls_.ImageListCmd[static_cast<size_t>(command)]->setEnabled(false);
    }
    ConnectTransport();
    ConnectPlaylist();
    ConnectControls();
    for (int button = 0; button < transportButtonCount; ++button) {
        controls_.ImagePlayButton[static_cast<size_t>(button)]->setEnabled(
            parts_.transport.IsButtonEnabled(button));
    }
    controls_.ImagePlayButton[ButtonRecord]->setEnabled(false);
}

void FrmMain::ConnectTransport() {
    Transport* transport = &parts_.transport;
    connect(transport, &Transport::ButtonEnabled, this, [this](int index, bool enabled) {
        // Recording has no window yet.
        controls_.ImagePlayButton[static_cast<size_t>(index)]->setEnabled(enabled && index != ButtonRecord);
    });
    connect(transport, &Transport::LampShown, this, [this](Lamp lamp) {
        for (size_t i = 0; i < controls_.ImageSmall.size(); ++i) {
            controls_.ImageSmall[i]->setVisible(static_cast<int>(lamp) == static_cast<int>(i));
        }
    });
    connect(transport, &Transport::PauseCaption, menus_.mnuPause, &QAction::setText);
    connect(transport, &Transport::NameShown, this, &FrmMain::ShowName);
    connect(transport, &Transport::ChangeColorEnabled, controls_.Command1, &QPushButton::setEnabled);
    connect(transport, &Transport::ThumbVisible, controls_.positionBar, &PositionBar::SetThumbVisible);
    connect(transport, &Transport::PositionReset, this, [this] { controls_.positionBar->SetLineWidth(0); });
    connect(transport, &Transport::ClockCleared, this, &FrmMain::PaintSkin);
    connect(transport, &Transport::KhzShown, this, &FrmMain::ShowKhz);
    connect(transport, &Transport::RowShown, controls_.ListViewPlaylist, &PlaylistView::EnsureVisible);
    connect(transport, &Transport::TimeShown, this, &FrmMain::ShowTime);
}

void FrmMain::ConnectPlaylist() {
    Admission* admission = &parts_.admission;
    PlaylistFiles* files = &parts_.files;
    PlaylistView* list = controls_.ListViewPlaylist;
    connect(admission, &Admission::RowShown, list, &PlaylistView::EnsureVisible);
    connect(admission, &Admission::TotalsChanged, this, &FrmMain::GetFileLong);
    connect(admission, &Admission::WaitCursor, this, &FrmMain::SetWaitCursor);
    connect(files, &PlaylistFiles::TotalsChanged, this, &FrmMain::GetFileLong);
    connect(files, &PlaylistFiles::WindowRepaint, this, &FrmMain::RepaintNow);
    connect(files, &PlaylistFiles::FilesAdded, this,
            [this] { parts_.transport.SetPlayButtonTrueFalse(ButtonPlay, true); });
    connect(files, &PlaylistFiles::NeighboursChanged, &parts_.transport, &Transport::SetPreNextButton);
    connect(files, &PlaylistFiles::ListLoaded, this, [this] {
        const bool canStart = parts_.rows.Count() > 0 && !parts_.transport.IsPlaying;
        parts_.transport.SetPlayButtonTrueFalse(ButtonPlay, canStart);
        parts_.transport.SetPreNextButton();
    });
    connect(list, &PlaylistView::RowClicked, this, &FrmMain::RowClicked);
    connect(list, &PlaylistView::RowActivated, this, [this](int row) {
        parts_.state.ClickedIndex = row;
        parts_.transport.ListViewPlaylist_DblClick();
    });
    connect(list, &PlaylistView::AddRequested, files, &PlaylistFiles::AddFilesByDialog);
    // The program that the files come from waits until the drop has returned.
    connect(list, &PlaylistView::FilesDropped, files, &PlaylistFiles::AddDroppedFiles, Qt::QueuedConnection);
    connect(list, &PlaylistView::MenuRequested, menus_.popmn,
            [this](const QPoint& at) { menus_.popmn->popup(at); });
    connect(&parts_.options, &Options::ColumnsChanged, this,
            [this] { controls_.ListViewPlaylist->SetColumns(parts_.options.Columns()); });
}

void FrmMain::ConnectControls() {
    for (size_t i = 0; i < controls_.ImagePlayButton.size(); ++i) {
        connect(controls_.ImagePlayButton[i], &QPushButton::clicked, this,
                [this, i] { parts_.transport.ImagePlayButton_Click(static_cast<int>(i)); });
    }
    for (size_t i = 0; i < controls_.ImageRepeatModeBut.size(); ++i) {
        connect(controls_.ImageRepeatModeBut[i], &QPushButton::clicked, this, [this, i] {
            parts_.options.ImageRepeatModeBut_Click(static_cast<int>(i));
            ShowModes();
        });
    }
    for (const int menu : {MenuFile, MenuPlay, MenuOptions}) {
        connect(controls_.LabelMenu[static_cast<size_t>(menu)], &QPushButton::clicked, this,
                [this, menu] { PopUp(menu); });
    }
    connect(controls_.ImageWin[0], &QPushButton::clicked, this, &QWidget::close);
    connect(controls_.ImageWin[1], &QPushButton::clicked, this, [this] {
        setWindowTitle(controls_.LabelCaption->text());
        showMinimized();
    });
    connect(controls_.ImageListCmd[0], &QPushButton::clicked, &parts_.files,
            &PlaylistFiles::AddFilesByDialog);
    connect(controls_.ImageListCmd[2], &QPushButton::clicked, this,
            [this] { parts_.files.OpenSavePlayList(QStringLiteral("OPEN"), false); });
    connect(controls_.ImageListCmd[3], &QPushButton::clicked, this, [this] {
        if (parts_.rows.Count() > 0) {
            parts_.files.OpenSavePlayList(QStringLiteral("SAVE"), false);
        }
    });
    connect(controls_.positionBar, &PositionBar::DragStarted, this,
            [this] { parts_.state.SeekDragging = true; });
    connect(controls_.positionBar, &PositionBar::DragCancelled, this,
            [this] { parts_.state.SeekDragging = false; });
    connect(controls_.positionBar, &PositionBar::Sought, this,
            [this](double lineWidth) { parts_.transport.SeekToLine(lineWidth, PositionBar::thumbWidth); });
    connect(controls_.volumeKnob, &VolumeKnobView::VolumeChosen, this, &FrmMain::SetVolumeFromKnob);
    connect(&menus_, &MainMenus::StartChosen, &parts_.transport, &Transport::PlayCurrentItem);
    connect(&menus_, &MainMenus::PauseChosen, &parts_.transport, &Transport::PauseContinue);
    connect(&menus_, &MainMenus::StopChosen, &parts_.transport, [this] {
        parts_.transport.IsPaused = false;
        parts_.transport.StopPlay();
    });
    connect(&menus_, &MainMenus::ExitChosen, this, &QWidget::close);
    QWidget* display = controls_.KSTAudioDisplay1;
    display->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(display, &QWidget::customContextMenuRequested, menus_.mnuOptions,
            [this, display](const QPoint& at) { menus_.mnuOptions->popup(display->mapToGlobal(at)); });
    connect(&parts_.options, &Options::Changed, this, &FrmMain::ShowModes);
    connect(&parts_.options, &Options::FftTypeChosen, this,
            [this](int /*type*/, int intervalMs) { parts_.audioPlayer.SetTimerInterval(intervalMs); });
    connect(controls_.ImageChgLstBnd, &QPushButton::clicked, this, [this] {
        const bool showList = controls_.ListViewPlaylist->isHidden();
        controls_.ListViewPlaylist->setVisible(showList);
        controls_.KSTEqualizer21->setVisible(!showList);
    });
    connect(controls_.KSTEqualizer21, &EqualizerPanel::GainsChanged, &parts_.options, &Options::SetBands);
    connect(&parts_.options, &Options::BandsChanged, this, [this] {
        controls_.KSTEqualizer21->ShowGains(parts_.options.Bands());
        parts_.audioPlayer.EnableEqualizer(true);
        parts_.audioPlayer.SetEqualizer(parts_.options.Bands());
    });
}

void FrmMain::FillColourList() {
    controls_.ListView1->addItems({QStringLiteral("BackColor"), QStringLiteral("BorderColor"),
                                   QStringLiteral("InscriptionsColor"), QStringLiteral("LevelsColor"),
                                   QStringLiteral("MaxLevelColor"), QStringLiteral("ScaleColor")});
    controls_.ListView1->setCurrentRow(0);
}

void FrmMain::PrepareSkin() {
    controls_.positionBar->SetLineWidth(0);
}

void FrmMain::PaintSkin() {
    for (QLabel* digit : controls_.ImageData) {
        digit->setText(QStringLiteral("0"));
    }
    for (QLabel* digit : controls_.ImageData1) {
        digit->setText(QStringLiteral("0"));
    }
}

void FrmMain::SizeAndCentre() {
    setFixedSize(mainWindowWidth, mainWindowHeight);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - rect().center());
}

void FrmMain::ShowKnob() {
    controls_.volumeKnob->ShowKnob();
    SetVolumeFromKnob(parts_.knob.Volume());
}

void FrmMain::Show() {
    GetFileLong();
    ShowModes();
    controls_.ListViewPlaylist->setFocus();
    show();
}

void FrmMain::closeEvent(QCloseEvent* event) {
    UnloadMainWindow(parts_.rows, parts_.files);
    event->accept();
    QCoreApplication::quit();
}

void FrmMain::keyPressEvent(QKeyEvent* event) {
    if (!event->modifiers().testFlag(Qt::AltModifier)) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_F:
        PopUp(MenuFile);
        break;
    case Qt::Key_P:
        PopUp(MenuPlay);
        break;
    case Qt::Key_O:
        PopUp(MenuOptions);
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

void FrmMain::PopUp(int menu) {
    const QPushButton* label = controls_.LabelMenu[static_cast<size_t>(menu)];
    QMenu* chosen = menu == MenuFile ? menus_.mnuFile : menu == MenuPlay ? menus_.mnuPlay : menus_.mnuOptions;
    chosen->popup(label->mapToGlobal(label->rect().bottomLeft()));
}

void FrmMain::GetFileLong() {
    const TotalTexts texts = TotalTextsOf(parts_.rows);
    controls_.LabelSeltal[0]->setText(texts.LabelSeltal0);
    controls_.LabelSeltal[1]->setText(texts.LabelSeltal1);
    controls_.PictureSelToal->setToolTip(texts.PictureSelToalTip);
    controls_.LabelTemp->setText(texts.LabelTemp);
    controls_.PictureSelToal->setText(texts.LabelTemp);
    int right = totalsRight;
    for (QLabel* label : controls_.LabelSeltal) {
        label->resize(label->sizeHint().width(), label->height());
        label->move(right - label->width(), label->y());
        right = label->x() - nameGap;
    }
}

void FrmMain::ShowTime(qint64 ms, qint64 totalMs) {
    if (totalMs == 0) {
        return;
    }
    const ClockDigits digits = DigitsFor(ms);
    for (size_t i = 0; i < digits.ticks.size(); ++i) {
        controls_.ImageData1[i]->setText(QString::number(digits.ticks[i]));
    }
    for (size_t i = 0; i < digits.minutesSeconds.size(); ++i) {
        controls_.ImageData[i]->setText(QString::number(digits.minutesSeconds[i]));
    }
    controls_.positionBar->SetLineWidth(LineWidthFor(ms, totalMs, PositionBar::thumbWidth));
}

void FrmMain::ShowName(const QString& fileName) {
    QLabel* name = controls_.LabelName;
    name->setText(fileName + QStringLiteral(" - "));
    const int left = controls_.LabelCaption->geometry().right() + 1;
    int width = name->sizeHint().width();
    const int closeLeft = controls_.ImageWin[1]->x();
    if (left + width > closeLeft) {
        width = closeLeft - nameGap - left;
    }
    name->setGeometry(left, name->y(), width, name->height());
}

void FrmMain::ShowKhz(bool show, const QString& formatText) {
    if (!show) {
        controls_.Image44100->clear();
        controls_.ImageKBPS->clear();
        return;
    }
    const QString upper = formatText.toUpper();
    controls_.Image44100->setText(upper.contains(QLatin1String("44,100")) ? QStringLiteral("44.1 kHz")
                                                                          : QStringLiteral("kHz"));
    const qsizetype unit = upper.indexOf(QLatin1String(" KBPS"));
    const QString rate = unit < 0 ? QString() : upper.left(unit).section(u' ', -1);
    controls_.ImageKBPS->setText(rate.isEmpty() ? QString() : rate + QStringLiteral(" kbit"));
}

void FrmMain::ShowModes() {
    for (size_t i = 0; i < controls_.ImageRepeatModeBut.size(); ++i) {
        controls_.ImageRepeatModeBut[i]->setChecked(parts_.options.LitMode() == static_cast<int>(i));
    }
}

void FrmMain::SetVolumeFromKnob(qint32 volume) {
    parts_.audioPlayer.SetVolume(PlayerVolumeFor(volume));
}

void FrmMain::RowClicked(int row) {
    if (row > 0) {
        parts_.state.ClickedIndex = row;
        parts_.state.CurIndex = row;
    }
    parts_.transport.ListViewPlaylist_Click();
    GetFileLong();
}

// In the middle of a long task. More often than a screen shows pictures would only hold up the task.
void FrmMain::RepaintNow() {
    if (!lastRepaint_.isValid() || lastRepaint_.hasExpired(repaintPeriodMs)) {
        repaint();
        lastRepaint_.start();
    }
}

void FrmMain::SetWaitCursor(bool on) {
    if (on == waiting_) {
        return;
    }
    waiting_ = on;
    if (on) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

} // namespace kestrune
