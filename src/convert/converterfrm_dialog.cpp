#include "convert/converterfrm_dialog.h"

#include "encoder_options/mp3_dialog.h"
#include "encoder_options/ogg_dialog.h"
#include "skin/skin_colours.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <cmath>

namespace kestrune {

namespace at = converter_layout;

namespace {

// A screen reader toggles a box without a click, so that the rules listen to `toggled`: what the program
// shows must not come back to them.
void ShowTick(QCheckBox* box, bool ticked) {
    const QSignalBlocker quiet(box);
    box->setChecked(ticked);
}

} // namespace

ConverterfrmDialog::ConverterfrmDialog(const ConverterWindowParts& parts, QWidget* parent)
    : SkinnedDialog(corners::ConverterfrmDialog, parent),
      parts_(parts),
      controls_(MakeConverterControls(this, pictures_, Chrome().Hover(), parts.rules)) {
    setObjectName(QStringLiteral("ConverterfrmDialog"));
    setWindowTitle(tr("Convert audio files"));
    setAccessibleName(windowTitle());
    setMouseTracking(true);
    Chrome().AddTitle(controls_.LabelTitle);
    Chrome().AddHandToButtons();
    for (QWidget* path : {controls_.LabelIn, controls_.LabelOut}) {
        Chrome().AddHand(path);
    }
    ConnectPaths();
    ConnectPathTexts();
    ConnectInput();
    ConnectOutput();
    ConnectRun();
    ConnectEvents();
    ConnectPanels();
    controls_.ListViewInput->setFocus();
}

void ConverterfrmDialog::Load() {
    ShowHeight();
    parts_.rules.Load();
}

// --- Paths ---

void ConverterfrmDialog::ConnectPaths() {
    JobList& jobs = parts_.rules.Jobs;
    connect(controls_.LabelIn, &PathLabel::Clicked, &jobs, &JobList::LabelIn_Click);
    connect(controls_.LabelOut, &PathLabel::Clicked, &jobs, &JobList::LabelOut_Click);
    connect(controls_.ImageinPath, &ImageButton::clicked, &jobs, &JobList::ImageinPath_Click);
    connect(controls_.ImageOutPath, &ImageButton::clicked, &jobs, &JobList::ImageOutPath_Click);
    connect(&jobs, &JobList::PathDisplayChanged, this, &ConverterfrmDialog::ShowPaths);
    connect(&jobs, &JobList::InputLookChanged, this, &ConverterfrmDialog::ShowInputLook);
    connect(&jobs, &JobList::LabelColoursReset, this, &ConverterfrmDialog::ResetLabelColours);
    ResetLabelColours();
    ShowPaths(0);
    ShowInputLook();
}

void ConverterfrmDialog::ConnectPathTexts() {
    JobList& jobs = parts_.rules.Jobs;
    const auto follow = [](auto* shown, const QString& name, const QString& text) {
        if (shown->text() != text) {
            shown->setText(text);
        }
        shown->setAccessibleName(tr("%1: %2").arg(name, text));
    };
    const auto followIn = [this, follow](const QString& text) {
        follow(controls_.LabelIn, tr("Input folder"), text);
    };
    const auto followOut = [this, follow](const QString& text) {
        follow(controls_.LabelOut, tr("Output folder"), text);
    };
    // While someone types, what is shown is what was typed: the cursor stays.
    const auto followText = [](QLineEdit* box, const QString& text) {
        if (box->text() != text) {
            box->setText(text);
        }
    };
    followIn(jobs.LabelIn());
    followOut(jobs.LabelOut());
    controls_.txtInputFile->setText(jobs.txtInputFile());
    controls_.TextOutPath->setText(jobs.TextOutPath());
    connect(&jobs, &JobList::LabelInShown, this, followIn);
    connect(&jobs, &JobList::LabelOutShown, this, followOut);
    connect(&jobs, &JobList::InputTextShown, this,
            [this, followText](const QString& text) { followText(controls_.txtInputFile, text); });
    connect(&jobs, &JobList::OutputTextShown, this,
            [this, followText](const QString& text) { followText(controls_.TextOutPath, text); });
    connect(controls_.txtInputFile, &QLineEdit::textChanged, &jobs, &JobList::txtInputFile_Change);
    connect(controls_.TextOutPath, &QLineEdit::textChanged, &jobs, &JobList::TextOutPath_Change);
    controls_.txtInputFile->installEventFilter(this);
    controls_.TextOutPath->installEventFilter(this);
}

void ConverterfrmDialog::ShowPaths(int focused) {
    const JobList& jobs = parts_.rules.Jobs;
    const struct {
        PathBox box;
        QWidget* label;
        QLineEdit* text;
    } paths[] = {{InputPathBox, controls_.LabelIn, controls_.txtInputFile},
                 {OutputPathBox, controls_.LabelOut, controls_.TextOutPath}};
    for (const auto& path : paths) {
        const bool labelled = jobs.IsLabelShown(path.box);
        const bool hadFocus = path.text->hasFocus();
        path.label->setVisible(labelled);
        path.text->setVisible(!labelled);
        if ((focused & path.box) != 0) {
            path.text->setFocus(Qt::OtherFocusReason);
            path.text->selectAll();
        } else if (labelled && hadFocus) {
            RestKeyboard();
        }
    }
}

void ConverterfrmDialog::RestKeyboard() {
    if (parts_.rules.Panels.IsPictureSetShown()) {
        controls_.ImageOptions->setFocus(Qt::MouseFocusReason);
    } else {
        controls_.ListViewInput->setFocus(Qt::MouseFocusReason);
    }
}

void ConverterfrmDialog::ShowInputLook() {
    const JobList& jobs = parts_.rules.Jobs;
    QLineEdit* box = controls_.txtInputFile;
    box->setReadOnly(jobs.IsInputReadOnly());
    const bool grey = jobs.IsInputGrey();
    QPalette look;
    if (grey) {
        look.setColor(QPalette::Base, QColor(240, 240, 240));
        look.setColor(QPalette::Text, colours::glass);
    }
    // The style's own field is always glass.
    box->setFrame(!grey);
    box->setAutoFillBackground(grey);
    box->setPalette(look);
}

void ConverterfrmDialog::ResetLabelColours() {
    for (QWidget* label : {controls_.LabelIn, controls_.LabelOut}) {
        QPalette inks = label->palette();
        inks.setColor(QPalette::WindowText, colours::textOnGlass);
        label->setPalette(inks);
    }
}

// --- Left side ---

void ConverterfrmDialog::ConnectInput() {
    ConverterRules& rules = parts_.rules;
    JobList& jobs = rules.Jobs;
    for (int i = 0; i < inputTypeCount; ++i) {
        QCheckBox* box = controls_.Checkin[static_cast<size_t>(i)];
        box->setChecked(jobs.Types().IsTicked(i));
        connect(box, &QCheckBox::toggled, &jobs, [&jobs, i](bool ticked) { jobs.Checkin_Click(i, ticked); });
    }
    connect(&jobs, &JobList::CheckInShown, this, [this](int index, bool ticked) {
        ShowTick(controls_.Checkin[static_cast<size_t>(index)], ticked);
    });
    InputListView* list = controls_.ListViewInput;
    list->setToolTip(jobs.ToolTip());
    list->viewport()->installEventFilter(this);
    connect(list, &QTreeView::clicked, &jobs,
            [&jobs](const QModelIndex& index) { jobs.ListViewInput_Click(index.row() + 1); });
    connect(list, &QTreeView::doubleClicked, &jobs, [&jobs] { jobs.ListViewInput_DblClick(); });
    connect(list, &InputListView::FilesDropped, &jobs, &JobList::ListViewInput_Drop);
    connect(&jobs, &JobList::ToolTipShown, list, &QWidget::setToolTip);
    for (size_t i = 0; i < controls_.ImageAllClear.size(); ++i) {
        connect(controls_.ImageAllClear[i], &ImageButton::clicked, &jobs,
                [&jobs, i] { jobs.ImageAllClear_Click(static_cast<int>(i)); });
    }
}

// --- Right side ---

void ConverterfrmDialog::ConnectOutput() {
    OutputSettings& settings = parts_.rules.Settings;
    for (int i = 0; i < outputBoxCount; ++i) {
        QCheckBox* box = controls_.formats[static_cast<size_t>(i)];
        box->setChecked(settings.IsTicked(static_cast<OutputBox>(i)));
        connect(box, &QCheckBox::toggled, &settings,
                [&settings, i](bool ticked) { settings.OutputBox_Click(i, ticked); });
    }
    connect(&settings, &OutputSettings::CheckOutShown, this, [this](int index, bool ticked) {
        ShowTick(controls_.formats[static_cast<size_t>(index)], ticked);
    });
    FormatPanel* panel = controls_.PictureSet;
    connect(panel->ImageSet(0), &ImageButton::clicked, this, &ConverterfrmDialog::OpenMp3);
    connect(panel->ImageSet(1), &ImageButton::clicked, this, &ConverterfrmDialog::OpenOgg);
    connect(panel->ImageSet(2), &ImageButton::clicked, &settings, &OutputSettings::ChooseTemplate);
}

// --- Run ---

void ConverterfrmDialog::ConnectRun() {
    ConversionRun& run = parts_.rules.Run;
    for (size_t i = 0; i < controls_.Label10.size(); ++i) {
        controls_.Label10[i]->setText(run.Label10(static_cast<int>(i)));
    }
    controls_.Label11->setText(run.Label11());
    ShowProgress(run.ProgressConvert());
    ShowProgressBar(run.ProgressBar1(), run.ProgressBar1Maximum());
    ShowRun();
    connect(&run, &ConversionRun::ControlsChanged, this, &ConverterfrmDialog::ShowRun);
    connect(&run, &ConversionRun::Label10Shown, this, [this](int index, const QString& text) {
        controls_.Label10[static_cast<size_t>(index)]->setText(text);
    });
    connect(&run, &ConversionRun::Label11Shown, controls_.Label11, &QLabel::setText);
    connect(&run, &ConversionRun::ProgressConvertShown, this, &ConverterfrmDialog::ShowProgress);
    connect(&run, &ConversionRun::ProgressBar1Shown, this, [this](int value, int maximum) {
        ShowProgressBar(value, maximum);
        controls_.ProgressBar1->repaint();
    });
    connect(&run, &ConversionRun::PointerShown, this, [this](bool busy) {
        if (busy) {
            setCursor(Qt::BusyCursor);
        } else {
            unsetCursor();
        }
    });
    connect(&run, &ConversionRun::RunEnded, this, [this] {
        if (closing_) {
            QDialog::reject();
        }
    });
    connect(controls_.Image1, &ImageButton::clicked, &run, &ConversionRun::Image1_Click);
    connect(controls_.Image2, &ImageButton::clicked, &run, &ConversionRun::Image2_Click);
    connect(controls_.ImageQuit, &ImageButton::clicked, this, &ConverterfrmDialog::reject);
}

void ConverterfrmDialog::ShowRun() {
    const ConversionRun& run = parts_.rules.Run;
    const bool start = run.IsImage1Visible();
    const bool stop = run.IsImage2Visible();
    // Start and Stop share one place: the keyboard stays there.
    const bool passesFocus =
        (controls_.Image1->hasFocus() && !start && stop) || (controls_.Image2->hasFocus() && !stop && start);
    controls_.stopPlate->setVisible(stop);
    controls_.Image2->setVisible(stop);
    controls_.Image1->setVisible(start);
    if (passesFocus) {
        (start ? controls_.Image1 : controls_.Image2)->setFocus(Qt::TabFocusReason);
    }
    controls_.ImageQuit->setEnabled(run.IsImageQuitEnabled());
    controls_.Label11->setVisible(run.IsLabel11Visible());
    for (QWidget* path : std::initializer_list<QWidget*>{controls_.txtInputFile, controls_.ImageinPath,
                                                         controls_.TextOutPath, controls_.ImageOutPath}) {
        path->setEnabled(run.ArePathsEnabled());
    }
}

void ConverterfrmDialog::ShowProgress(float percent) {
    controls_.ProgressConvert->setValue(
        static_cast<int>(std::lround(percent * static_cast<float>(progressConvertScale))));
}

void ConverterfrmDialog::ShowProgressBar(int value, int maximum) {
    controls_.ProgressBar1->setMaximum(maximum);
    controls_.ProgressBar1->setValue(value);
}

void ConverterfrmDialog::ConnectEvents() {
    QTreeView* view = controls_.viewEvent;
    view->viewport()->installEventFilter(this);
    const EventLog& log = parts_.rules.Events;
    connect(&log, &EventLog::RowShown, this,
            [&log, view](int line) { view->scrollTo(log.index(line - 1, EventOperation)); });
}

// --- Panels ---

void ConverterfrmDialog::ConnectPanels() {
    ConverterPanels& panels = parts_.rules.Panels;
    connect(controls_.ImageUpdown, &ImageButton::clicked, &panels, &ConverterPanels::ImageUpdown_Click);
    connect(controls_.ImageOptions, &ImageButton::clicked, &panels, &ConverterPanels::ImageOptions_Click);
    connect(controls_.PictureSet->ImageSetdown(), &ImageButton::clicked, &panels,
            &ConverterPanels::ImageSetdown_Click);
    connect(&panels, &ConverterPanels::HeightChanged, this, &ConverterfrmDialog::ShowHeight);
    connect(&panels, &ConverterPanels::PictureSetShown, this, &ConverterfrmDialog::ShowPictureSet);
}

void ConverterfrmDialog::ShowHeight() {
    const bool isLong = parts_.rules.Panels.IsLong();
    const KeyLayout& key = isLong ? at::ImageUpdownLong : at::ImageUpdown;
    controls_.ImageUpdown->SetLooks({key.hover, key.pressed});
    const QString tip = isLong ? tr("Hide the events") : tr("Show the events");
    controls_.ImageUpdown->setToolTip(tip);
    controls_.ImageUpdown->setAccessibleName(tip);
    controls_.frmEvent->setVisible(isLong);
    Chrome().SetBackground(isLong ? &pictures_.Long() : &pictures_.Short());
    setFixedSize(at::width, parts_.rules.Panels.Height());
    Chrome().Centre();
}

void ConverterfrmDialog::ShowPictureSet(bool shown) {
    FormatPanel* panel = controls_.PictureSet;
    const bool hadFocus = panel->isAncestorOf(focusWidget());
    controls_.ImageOptions->setChecked(shown);
    if (shown && controls_.inputSide->isAncestorOf(focusWidget())) {
        RestKeyboard();
    }
    // What the panel covers can't be reached by Tab either.
    controls_.inputSide->setVisible(!shown);
    panel->move(pictureSetLeft, pictureSetTop);
    panel->setVisible(shown);
    if (shown) {
        panel->raise();
    } else if (hadFocus) {
        controls_.ImageOptions->setFocus(Qt::OtherFocusReason);
    }
}

// --- Mouse and keys ---

void ConverterfrmDialog::mouseMoveEvent(QMouseEvent* event) {
    parts_.rules.Jobs.Form_MouseMove(event->position().toPoint().y());
    SkinnedDialog::mouseMoveEvent(event);
}

bool ConverterfrmDialog::eventFilter(QObject* watched, QEvent* event) {
    const bool isPath = watched == controls_.txtInputFile || watched == controls_.TextOutPath;
    if (event->type() == QEvent::KeyPress && isPath) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter) {
            const bool isInput = watched == controls_.txtInputFile;
            parts_.rules.Jobs.InputControlStat(true, isInput ? InputPathBox : OutputPathBox);
            (isInput ? controls_.LabelIn : controls_.LabelOut)->setFocus(Qt::OtherFocusReason);
            return true;
        }
    } else if (event->type() == QEvent::MouseMove && !isPath) {
        // The lists keep their moves from the window.
        const auto* widget = qobject_cast<QWidget*>(watched);
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (widget != nullptr) {
            parts_.rules.Jobs.Form_MouseMove(widget->mapTo(this, mouse->position().toPoint()).y());
        }
    }
    return SkinnedDialog::eventFilter(watched, event);
}

void ConverterfrmDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && parts_.rules.Panels.IsPictureSetShown()) {
        parts_.rules.Panels.ImageSetdown_Click();
        return;
    }
    SkinnedDialog::keyPressEvent(event);
}

void ConverterfrmDialog::reject() {
    ConversionRun& run = parts_.rules.Run;
    if (!run.IsImageQuitEnabled()) {
        return;
    }
    if (run.IsRunning()) {
        closing_ = true;
        run.Abandon();
        return;
    }
    SkinnedDialog::reject();
}

// --- Encoder dialogs ---

void ConverterfrmDialog::OpenMp3() {
    OutputSettings& settings = parts_.rules.Settings;
    const auto showIn = [&settings](FormatBox box) {
        return [&settings, box](const QString& text) { settings.SetFormatText(box, text); };
    };
    Mp3Dialog dialog(
        parts_.rules.State.Mp3Options,
        {parts_.outputFile, showIn(FormatBox::txtMP3FormatString), showIn(FormatBox::txtMP2FormatString)},
        this);
    dialog.exec();
    settings.EncoderDialogClosed(EncoderDialog::Mp3);
}

void ConverterfrmDialog::OpenOgg() {
    OutputSettings& settings = parts_.rules.Settings;
    OggDialog dialog(
        {parts_.outputFile, parts_.prompts,
         [&settings](const QString& text) { settings.SetFormatText(FormatBox::txtOGGFormatString, text); }},
        parts_.rules.State.SampleRate, parts_.rules.State.Channels, this);
    dialog.exec();
    settings.EncoderDialogClosed(EncoderDialog::Ogg);
}

} // namespace kestrune
