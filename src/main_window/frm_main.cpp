#include "main_window/frm_main.h"

#include "display/display_frame.h"
#include "main_window/letter_keys.h"
#include "main_window/main_controls_builder.h"
#include "playback/format_lamps.h"
#include "playback/position.h"
#include "playlist/playlist_text.h"
#include "playlist/playlist_totals.h"
#include "skin/hover_keeper.h"
#include "skin/program_icon.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

namespace kestrune {

namespace {

constexpr int altKeyCode = 18;
constexpr int nameGap = 10;
constexpr int repaintPeriodMs = 33;
constexpr int bigDigitTop = 238;
constexpr int smallDigitTop = 257;
constexpr int bigDigitStep = 12;
constexpr int smallDigitStep = 9;
constexpr int firstDigitLeft = 4;
constexpr qint32 startLevelsColour = 0x8080FF;
constexpr qint32 startFftSize = 4096;
constexpr float startEqualizerRange = 30;

// The codes that the routing takes, 0 for other keys.
int KeyCode(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Alt) {
        return altKeyCode;
    }
    return LetterOf(event);
}

// The face of the skin, or its narrower cut if the text is too long for that.
QFont FittingFace(QFont face, const QString& text, int room) {
    const QString usual = QStringLiteral("Inter");
    face.setFamilies({usual});
    if (QFontMetrics(face).horizontalAdvance(text) > room) {
        face.setFamilies({QStringLiteral("Inter Display"), usual});
    }
    return face;
}

} // namespace

FrmMain::FrmMain(const FrmMainParts& parts)
    : SkinnedWindow(corners::mainWindow),
      parts_(parts),
      controls_(MakeMainControls(
          this, {parts_.pictures, Chrome().Hover(), parts_.rows, parts_.knob, parts_.display})),
      menus_(this, parts_.options, parts_.rows, parts_.routing) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(parts_.state.AppTitle);
    setWindowIcon(ProgramIcon());
    Chrome().SetBackground(&parts_.pictures.Window());
    TimerToolBar.setObjectName(QStringLiteral("TimerToolBar"));
    TimerToolBar.setParent(this);
    TimerToolBar.setInterval(toolBarTickMs);
    TimerVolume.setInterval(idleTickMs);
    ConnectTransport();
    ConnectLooks();
    ConnectPlaylist();
    ConnectListView();
    ConnectControls();
    ConnectToolBar();
    ConnectOptions();
    ConnectMenus();
    for (int button = 0; button < transportButtonCount; ++button) {
        controls_.ImagePlayButton[static_cast<size_t>(button)]->setEnabled(
            parts_.transport.IsButtonEnabled(button));
    }
    QApplication::instance()->installEventFilter(this);
}

// --- Steps of the start ---

void FrmMain::FillColourList() {
    controls_.colourPanel->FillColourList();
}

void FrmMain::PrepareDisplay() {
    parts_.display.SetProperty(DisplayLevelsColor, startLevelsColour);
    parts_.display.SetProperty(DisplayBorderStyle, BorderLowered);
    parts_.display.SetProperty(DisplayFftSize, startFftSize);
    controls_.KSTEqualizer21->Control().SetProperty(equalizerRange, startEqualizerRange);
}

void FrmMain::PrepareSkin() {
    Chrome().AddTitle(controls_.LabelTitle);
    Chrome().AddHandToButtons();
    for (QWidget* part : std::initializer_list<QWidget*>{controls_.volumeKnob, controls_.positionBar,
                                                         controls_.listScrollBar}) {
        Chrome().AddHand(part);
    }
    for (BandFaderWidget* fader : controls_.KSTEqualizer21->findChildren<BandFaderWidget*>()) {
        Chrome().AddHand(fader);
    }
    controls_.positionBar->SetLineWidth(0);
}

void FrmMain::PaintSkin() {
    PutPicClip();
    ClearTimer();
}

void FrmMain::SizeAndCentre() {
    setFixedSize(layout::window);
    Chrome().Centre();
}

void FrmMain::ShowKnob() {
    controls_.volumeKnob->ShowKnob();
    VolumeTurned(parts_.knob.Volume());
}

void FrmMain::Show() {
    // The sums under the list keep the texts they start with until a list was counted.
    ShowTotals(TotalTextsOf(parts_.rows).LabelTemp);
    ShowModes();
    ShowToolBar();
    ShowPanel(Panel::Playlist);
    TimerVolume.start();
    controls_.ListViewPlaylist->setFocus();
    show();
}

// --- Keys and mouse ---

void FrmMain::closeEvent(QCloseEvent* event) {
    UnloadMainWindow(parts_.rows, parts_.files);
    emit Unloaded();
    event->accept();
    QCoreApplication::quit();
}

void FrmMain::changeEvent(QEvent* event) {
    // The release of a key that is let go in another window never comes here.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        LetGoOfAlt();
    }
    if (event->type() == QEvent::WindowStateChange) {
        isMinimized() ? TimerVolume.stop() : TimerVolume.start();
    }
    SkinnedWindow::changeEvent(event);
}

// The window sees keys before its controls do.
bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    // The release of a key that is let go in an open menu never comes here.
    if (event->type() == QEvent::Hide && widget != nullptr && widget->windowType() == Qt::Popup) {
        LetGoOfAlt();
    }
    if (widget == nullptr || widget->window() != this) {
        return SkinnedWindow::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (HandleKey(event)) {
            return true;
        }
        break;
    case QEvent::Enter:
    case QEvent::MouseMove:
        ToolBarMouse(widget);
        break;
    case QEvent::MouseButtonRelease:
        if (HoverKeeper::IsLetGoElsewhere(*widget, *static_cast<QMouseEvent*>(event))) {
            ToolBarMouse(nullptr);
        }
        break;
    default:
        break;
    }
    return SkinnedWindow::eventFilter(watched, event);
}

bool FrmMain::HandleKey(QEvent* event) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr) {
        return false;
    }
    if (event->type() == QEvent::KeyPress) {
        const int code = KeyCode(*key);
        ShowLetters(code == altKeyCode || (parts_.routing.IsAltDown() && code != 0));
        return code != 0 && parts_.routing.KeyDown(code) && code != altKeyCode;
    }
    if (key->isAutoRepeat()) {
        return false;
    }
    LetGoOfAlt();
    // In other controls the key means something else, or nothing.
    if (key->key() == Qt::Key_Delete && controls_.ListViewPlaylist->hasFocus()) {
        parts_.editing.DeleteKey();
        return true;
    }
    return false;
}

void FrmMain::LetGoOfAlt() {
    parts_.routing.KeyUp();
    ShowLetters(false);
}

void FrmMain::ShowLetters(bool shown) {
    for (MenuLabel* label : controls_.LabelMenu) {
        label->ShowLetter(shown);
    }
}

void FrmMain::PopUpAtLabel(MainMenu menu) {
    const MenuLabel* label = controls_.LabelMenu[static_cast<size_t>(menu)];
    menus_.Menu(menu)->popup(label->mapToGlobal(QPoint(0, 0)));
}

void FrmMain::PopUpAtCursor(MainMenu menu) {
    const MenuLabel* label = controls_.LabelMenu[static_cast<size_t>(menu)];
    // A label pressed by a key has no cursor on it.
    const bool byMouse = label->rect().contains(label->mapFromGlobal(QCursor::pos()));
    menus_.Menu(menu)->popup(byMouse ? QCursor::pos() : label->mapToGlobal(label->rect().bottomLeft()));
}

void FrmMain::Raise() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

// --- What is shown ---

QWidget* FrmMain::FirstOf(Panel panel) const {
    if (panel == Panel::Playlist) {
        return controls_.ListViewPlaylist;
    }
    QWidget* whole =
        panel == Panel::Equalizer ? static_cast<QWidget*>(controls_.KSTEqualizer21) : controls_.colourPanel;
    for (QWidget* next = whole; next != nullptr; next = next->nextInFocusChain()) {
        if (whole->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) != 0) {
            return next;
        }
        if (next->nextInFocusChain() == whole) {
            break;
        }
    }
    return whole;
}

void FrmMain::ShowPanel(Panel panel) {
    bool keysInPanel = false;
    for (const QWidget* shown : std::initializer_list<QWidget*>{
             controls_.ListViewPlaylist, controls_.KSTEqualizer21, controls_.colourPanel}) {
        const QWidget* focused = QApplication::focusWidget();
        keysInPanel =
            keysInPanel || (focused != nullptr && (focused == shown || shown->isAncestorOf(focused)));
    }
    controls_.ListViewPlaylist->setVisible(panel == Panel::Playlist);
    controls_.listScrollBar->setVisible(panel == Panel::Playlist);
    controls_.KSTEqualizer21->setVisible(panel == Panel::Equalizer);
    controls_.colourPanel->setVisible(panel == Panel::Colours);
    controls_.ImageChgLstBnd->setChecked(panel == Panel::Equalizer);
    controls_.ImageColour->setChecked(panel == Panel::Colours);
    // The keys were in what has gone.
    if (keysInPanel) {
        QWidget* first = FirstOf(panel);
        first->setFocus(Qt::MouseFocusReason);
    }
}

void FrmMain::PutPicClip() {
    for (size_t i = 0; i < controls_.PictureClp.size(); ++i) {
        const FramePiece& piece = displayFramePieces[i];
        controls_.PictureClp[i]->GetPicClip(piece.strip.x(), piece.strip.y(), piece.strip.width(),
                                            piece.strip.height(), piece.window.x(), piece.window.y());
    }
    parts_.display.SetProperty(DisplayBackColor, DisplayGround(parts_.options.FftType()));
}

void FrmMain::ClearTimer() {
    ShowDigits({});
}

void FrmMain::ShowDigits(const ClockDigits& digits) {
    for (size_t i = 0; i < digits.ticks.size(); ++i) {
        controls_.ImageData1[i]->SetCut(
            {{digits.ticks[i] * smallDigitStep + firstDigitLeft, smallDigitTop}, layout::smallDigit});
    }
    for (size_t i = 0; i < digits.minutesSeconds.size(); ++i) {
        controls_.ImageData[i]->SetCut(
            {{digits.minutesSeconds[i] * bigDigitStep + firstDigitLeft, bigDigitTop}, layout::bigDigit});
    }
    if (digits.minutesSeconds == spokenDigits_) {
        return;
    }
    spokenDigits_ = digits.minutesSeconds;
    // The first digit speaks for all of them.
    const auto& [tens, minutes, secondTens, seconds] = digits.minutesSeconds;
    controls_.ImageData[0]->setAccessibleName(
        tr("Time %1%2:%3%4").arg(tens).arg(minutes).arg(secondTens).arg(seconds));
}

void FrmMain::ShowTime(qint64 ms, qint64 totalMs) {
    if (totalMs == 0) {
        return;
    }
    ShowDigits(DigitsFor(ms));
    controls_.positionBar->SetLineWidth(LineWidthFor(ms, totalMs, PositionBar::thumbWidth));
}

void FrmMain::GetFileLong() {
    const TotalTexts texts = TotalTextsOf(parts_.rows);
    controls_.LabelSeltal[0]->setText(texts.LabelSeltal0);
    controls_.LabelSeltal[1]->setText(texts.LabelSeltal1);
    controls_.PictureSelToal->setToolTip(texts.PictureSelToalTip);
    ShowTotals(texts.LabelTemp);
}

void FrmMain::ShowTotals(const QString& times) {
    controls_.LabelTemp->setText(times);
    controls_.PictureSelToal->SetText(times);
    int right = layout::totalsRight;
    for (QLabel* label : controls_.LabelSeltal) {
        label->setAccessibleName(label->toolTip() + u' ' + label->text());
        label->resize(label->sizeHint().width(), label->height());
        label->move(right - label->width(), label->y());
        right = label->x() - nameGap;
    }
}

void FrmMain::ShowName(const QString& fileName) {
    QLabel* name = controls_.LabelName;
    name->setText(OneLine(fileName) + QStringLiteral(" - "));
    const int left = controls_.LabelCaption->geometry().right() + 1;
    int width = name->sizeHint().width();
    const int limit = controls_.ImageWin[1]->x();
    if (left + width > limit) {
        width = limit - nameGap - left;
    }
    name->setGeometry(left, name->y(), width, name->height());
}

void FrmMain::DispKhz(bool show, const QString& formatText) {
    QLabel* words = controls_.LabelFormat;
    words->setFont(FittingFace(words->font(), formatText, words->width()));
    words->setText(show ? words->fontMetrics().elidedText(formatText, Qt::ElideRight, words->width())
                        : QString());
    words->setToolTip(show ? formatText : QString());
    words->setAccessibleName(words->toolTip());
    if (!show) {
        controls_.Image44100->Clear();
        controls_.ImageKBPS->Clear();
        return;
    }
    const LampCut rate = SampleRateLamp(formatText);
    controls_.Image44100->GetPicClip(rate.left, lampTop, rate.width, lampHeight);
    const LampCut bits = BitRateLamp(formatText);
    // Narrow figures stand at the right, beside their unit.
    controls_.ImageKBPS->GetPicClip(bits.left, lampTop, bits.width, lampHeight,
                                    layout::ImageKBPS.x() + layout::ImageKBPS.width() - bits.width);
}

void FrmMain::ShowModes() {
    for (size_t i = 0; i < controls_.ImageRepeatModeBut.size(); ++i) {
        controls_.ImageRepeatModeBut[i]->setChecked(parts_.options.IsModeChecked(static_cast<PlayMode>(i)));
    }
}

void FrmMain::ToolBarMouse(const QWidget* under) {
    for (int item = 0; item < toolBarItems; ++item) {
        if (controls_.ImageToolBar[static_cast<size_t>(item)] == under) {
            if (toolBar_.Move(item)) {
                TimerToolBar.start();
                ShowToolBar();
            }
            return;
        }
    }
    if (toolBar_.Leave()) {
        TimerToolBar.stop();
        ShowToolBar();
    }
}

void FrmMain::ShowToolBar() {
    for (size_t item = 0; item < controls_.toolFrames.size(); ++item) {
        const int frame = toolBar_.Frame(static_cast<int>(item));
        PictureLabel* shown = controls_.toolFrames[item];
        if (frame != ToolBarAnimation::blank) {
            shown->GetImageClip(layout::toolFrameLefts[static_cast<size_t>(frame)],
                                layout::toolFrameTops[item]);
        }
        shown->setVisible(frame != ToolBarAnimation::blank);
    }
}

void FrmMain::RowClicked(int row) {
    parts_.buttons.ListViewPlaylist_Click(row);
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

void FrmMain::VolumeTurned(qint32 volume) {
    parts_.audioPlayer.SetVolume(PlayerVolumeFor(volume));
    emit VolumeChanged();
}

void FrmMain::SetVolume(qint32 volume) {
    parts_.knob.SetVolume(volume);
    ShowKnob();
}

} // namespace kestrune
