#include "convert/converter_controls.h"

#include "convert/converter_rules.h"
#include "skin/skin_colours.h"
#include "skin/window_kit.h"
#include "tool_window/event_sign_delegate.h"

#include <QHeaderView>

namespace kestrune {

namespace at = converter_layout;

namespace {

constexpr int optionsCaptionLeft = 30;
constexpr int heightCaptionLeft = 27;
constexpr int pathTextMargin = 5; // so that a label and its text box have their text in one place

const std::array<const char*, outputBoxCount> formatNames = {"chWMA",  "chMP3",  "chOGG",  "chADPCM",
                                                             "chDSP",  "chMP2",  "chVOX",  "chGSM",
                                                             "chG721", "chG723", "chG726", "chULAW"};
const std::array<const char*, outputBoxCount> formatCaptions = {
    "WMA", "MP3", "OGG", "ADPCM", "DSP", "MP2", "VOX", "GSM", "G.721", "G.723", "G.726", "A-LAW"};

class Builder {
public:
    Builder(QWidget* window, const ConverterPictures& pictures, HoverKeeper& hover, ConverterRules& rules)
        : window_(window),
          pictures_(pictures),
          hover_(hover),
          rules_(rules),
          kit_(window, pictures.Strip(), &pictures.Off(), hover) {}

    ConverterControls Make() {
        controls_.inputSide = Put(new QWidget(window_), QStringLiteral("inputSide"), at::inputSide);
        MakeTitle();
        MakePaths();
        MakeInput();
        MakeOutput();
        MakeProgress();
        MakeRunKeys();
        MakeEvents();
        controls_.PictureSet =
            new FormatPanel(pictures_.Strip(), hover_, rules_.State, rules_.Settings, window_);
        controls_.PictureSet->hide();
        OrderTabs();
        return controls_;
    }

private:
    // A place of the window in the side of the input.
    static QRect InSide(const QRect& place) { return place.translated(-at::inputSide.topLeft()); }

    void MakeTitle();
    void MakePaths();
    void MakeInput();
    void MakeOutput();
    void MakeProgress();
    void MakeRunKeys();
    void MakeEvents();
    void OrderTabs();

    QWidget* window_;
    const ConverterPictures& pictures_;
    HoverKeeper& hover_;
    ConverterRules& rules_;
    WindowKit kit_;
    ConverterControls controls_{};
};

void Builder::MakeTitle() {
    controls_.LabelTitle = Put(new QWidget(window_), QStringLiteral("LabelTitle"), at::title);
    QLabel* caption = kit_.Text(QStringLiteral("LabelCaption"), QStringLiteral("Kestrune"), at::caption,
                                colours::textOnBody, window_);
    SetInk(caption, colours::textOnBody, titleFontPixels, QFont::DemiBold);
    QLabel* subject = kit_.Text(QStringLiteral("LabelSubject"), QObject::tr("Convert audio files"),
                                at::subject, colours::textMutedOnBody, window_);
    for (QLabel* label : {caption, subject}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    controls_.ImageQuit = kit_.Picture(QStringLiteral("ImageQuit"), QObject::tr("Close"), at::ImageQuit,
                                       hover_.AddGroup(), 0, window_);
}

void Builder::MakePaths() {
    QWidget* side = controls_.inputSide;
    const std::array<QString, 2> captions = {QObject::tr("Input folder"), QObject::tr("Output folder")};
    kit_.Text(Indexed(QStringLiteral("LabelPath"), 0), captions[0], InSide(at::pathCaption[0]),
              colours::textMutedOnBody, side);
    kit_.Text(Indexed(QStringLiteral("LabelPath"), 1), captions[1], at::pathCaption[1],
              colours::textMutedOnBody, window_);
    controls_.LabelIn = Put(new PathLabel(side), QStringLiteral("LabelIn"), InSide(at::path[0]));
    controls_.LabelOut = Put(new PathLabel(window_), QStringLiteral("LabelOut"), at::path[1]);
    controls_.txtInputFile = Put(new QLineEdit(side), QStringLiteral("txtInputFile"), InSide(at::path[0]));
    controls_.TextOutPath = Put(new QLineEdit(window_), QStringLiteral("TextOutPath"), at::path[1]);
    for (QLineEdit* box : {controls_.txtInputFile, controls_.TextOutPath}) {
        box->setTextMargins(pathTextMargin, 0, pathTextMargin, 0);
    }
    controls_.txtInputFile->setAccessibleName(captions[0]);
    controls_.TextOutPath->setAccessibleName(captions[1]);
    const int group = hover_.AddGroup();
    controls_.ImageinPath = kit_.Picture(
        QStringLiteral("ImageinPath"), QObject::tr("Choose the input folder"), at::folder[0], group, 0, side);
    controls_.ImageOutPath =
        kit_.Picture(QStringLiteral("ImageOutPath"), QObject::tr("Choose the output folder"), at::folder[1],
                     group, 1, window_);
}

void Builder::MakeInput() {
    QWidget* side = controls_.inputSide;
    for (int i = 0; i < inputTypeCount; ++i) {
        auto* box = new QCheckBox(InputTypes::Caption(i), side);
        const auto column = static_cast<size_t>(i) % at::CheckinLeft.size();
        const auto row = static_cast<size_t>(i) / at::CheckinLeft.size();
        Put(box, Indexed(QStringLiteral("Checkin"), i),
            InSide({{at::CheckinLeft[column], at::CheckinTop[row]}, at::Checkin}));
        box->setAccessibleName(QObject::tr("List %1 files").arg(InputTypes::Caption(i)));
        controls_.Checkin[static_cast<size_t>(i)] = box;
    }
    controls_.ListViewInput =
        Put(new InputListView(side), QStringLiteral("ListViewInput"), InSide(at::ListViewInput));
    controls_.ListViewInput->setAccessibleName(QObject::tr("Files to convert"));
    controls_.ListViewInput->setModel(&rules_.Rows);
    for (size_t i = 0; i < at::listColumns.size(); ++i) {
        controls_.ListViewInput->header()->resizeSection(static_cast<int>(i), at::listColumns[i]);
    }
    const int group = hover_.AddGroup();
    const std::array<QString, 2> tips = {QObject::tr("Tick all files"), QObject::tr("Untick all files")};
    for (size_t i = 0; i < tips.size(); ++i) {
        controls_.ImageAllClear[i] = kit_.Picture(Indexed(QStringLiteral("ImageAllClear"), i), tips[i],
                                                  at::ImageAllClear[i], group, static_cast<int>(i), side);
    }
    controls_.Label10[1] = kit_.Text(Indexed(QStringLiteral("Label10"), 1), QString(), InSide(at::statusLine),
                                     colours::textOnBody, side);
    controls_.Label10[1]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void Builder::MakeOutput() {
    for (size_t i = 0; i < formatNames.size(); ++i) {
        const QString caption = QLatin1String(formatCaptions[i]);
        auto* box = new QCheckBox(caption, window_);
        Put(box, QLatin1String(formatNames[i]),
            InGrid(at::format, static_cast<int>(i), at::formatColumns, at::formatStep, at::formatRowStep));
        box->setAccessibleName(QObject::tr("Write %1").arg(caption));
        controls_.formats[i] = box;
    }
}

void Builder::MakeProgress() {
    controls_.Label10[0] = kit_.Text(Indexed(QStringLiteral("Label10"), 0), QString(), at::currentFile,
                                     colours::textOnGlass, window_);
    controls_.Label10[0]->SetHint(QObject::tr("Tick files and formats, then start"));
    controls_.Label11 =
        kit_.Text(QStringLiteral("Label11"), QString(), at::stage, colours::accentOnBody, window_);
    QFont bold = controls_.Label11->font();
    bold.setWeight(QFont::DemiBold);
    controls_.Label11->setFont(bold);
    const std::array<QString, 2> captions = {QObject::tr("File"), QObject::tr("All")};
    for (size_t i = 0; i < captions.size(); ++i) {
        kit_.Text(Indexed(QStringLiteral("LabelBar"), i), captions[i], at::barCaption[i], colours::textMuted,
                  window_);
    }
    controls_.ProgressConvert = Put(new QProgressBar(window_), QStringLiteral("ProgressConvert"), at::bar[0]);
    controls_.ProgressBar1 = Put(new QProgressBar(window_), QStringLiteral("ProgressBar1"), at::bar[1]);
    controls_.ProgressConvert->setRange(0, progressConvertMaximum);
    controls_.ProgressConvert->setAccessibleName(QObject::tr("Progress of the file"));
    controls_.ProgressBar1->setAccessibleName(QObject::tr("Progress of all files"));
    for (QProgressBar* bar : {controls_.ProgressConvert, controls_.ProgressBar1}) {
        bar->setTextVisible(false);
    }
}

void Builder::MakeRunKeys() {
    controls_.Image1 = kit_.Picture(QStringLiteral("Image1"), QObject::tr("Start"), at::Image1,
                                    hover_.AddGroup(), 0, window_);
    controls_.stopPlate =
        Put(new PictureLabel(pictures_.Strip(), window_), QStringLiteral("stopPlate"), at::Image2.place);
    controls_.stopPlate->SetCut({at::Image2Normal, at::Image2.place.size()});
    controls_.Image2 = kit_.Picture(QStringLiteral("Image2"), QObject::tr("Stop"), at::Image2,
                                    hover_.AddGroup(), 0, window_);
    controls_.ImageOptions = new CaptionedButton(
        pictures_.Strip(), {at::ImageOptions.hover, at::ImageOptions.pressed, at::ImageOptions.lit},
        optionsCaptionLeft, window_);
    controls_.ImageOptions->setText(QObject::tr("Settings"));
    kit_.Equip(controls_.ImageOptions, QStringLiteral("ImageOptions"), QObject::tr("Format settings"),
               at::ImageOptions, hover_.AddGroup(), 0);
    controls_.ImageOptions->setCheckable(true);
    controls_.ImageUpdown = new CaptionedButton(
        pictures_.Strip(), {at::ImageUpdown.hover, at::ImageUpdown.pressed}, heightCaptionLeft, window_);
    controls_.ImageUpdown->setText(QObject::tr("Events"));
    kit_.Equip(controls_.ImageUpdown, QStringLiteral("ImageUpdown"), QObject::tr("Show the events"),
               at::ImageUpdown, hover_.AddGroup(), 0);
}

void Builder::MakeEvents() {
    controls_.frmEvent = Put(new QWidget(window_), QStringLiteral("frmEvent"), at::frmEvent);
    controls_.frmEvent->setAccessibleName(QObject::tr("Events"));
    kit_.Text(QStringLiteral("LabelEvents"), QObject::tr("Events"), at::eventsCaption,
              colours::textMutedOnBody, controls_.frmEvent);
    auto* view = Put(new QTreeView(controls_.frmEvent), QStringLiteral("viewEvent"), at::viewEvent);
    view->setAccessibleName(QObject::tr("Events"));
    view->setFrameShape(QFrame::NoFrame);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setItemsExpandable(false);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setModel(&rules_.Events);
    view->setItemDelegateForColumn(EventItem, new EventSignDelegate(pictures_.EventSigns(), view));
    view->header()->setSectionsMovable(false);
    for (size_t i = 0; i < at::eventColumns.size(); ++i) {
        view->header()->resizeSection(static_cast<int>(i), at::eventColumns[i]);
    }
    controls_.viewEvent = view;
    controls_.frmEvent->hide();
}

// As the eye goes: input from its folder down, output likewise, then the run.
void Builder::OrderTabs() {
    QWidgetList order = {controls_.LabelIn, controls_.txtInputFile, controls_.ImageinPath};
    const auto add = [&order](const auto& widgets) {
        for (QWidget* widget : widgets) {
            order.append(widget);
        }
    };
    add(controls_.Checkin);
    order.append(controls_.ListViewInput);
    add(controls_.ImageAllClear);
    // Where the panel is open it lies over all of these.
    add(controls_.PictureSet->TabOrder());
    order.append({controls_.LabelOut, controls_.TextOutPath, controls_.ImageOutPath});
    add(controls_.formats);
    order.append({controls_.Image1, controls_.Image2, controls_.ImageOptions, controls_.ImageUpdown,
                  controls_.viewEvent, controls_.ImageQuit});
    kestrune::OrderTabs(order);
}

} // namespace

ConverterControls MakeConverterControls(QWidget* window, const ConverterPictures& pictures,
                                        HoverKeeper& hover, ConverterRules& rules) {
    return Builder(window, pictures, hover, rules).Make();
}

} // namespace kestrune
