#include "convert/format_panel.h"

#include "convert/converter_state.h"
#include "convert/format_text_box.h"
#include "skin/skin_colours.h"
#include "skin/skin_picture.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QRadioButton>
#include <QSignalBlocker>

namespace kestrune {

namespace at = format_panel_layout;

namespace {

struct Line {
    const char* caption;
    const char* text; // objectName of its text
};

// In the order of FormatBox.
constexpr std::array<Line, formatBoxCount> lines = {{{"WMA", "txtWMAFormatString"},
                                                     {"MP3", "txtMP3FormatString"},
                                                     {"OGG", "txtOGGFormatString"},
                                                     {"ADPCM", "txtADPCMFormatString"},
                                                     {"DSP", "txtDSPFormatString"},
                                                     {"MP2", "txtMP2FormatString"},
                                                     {"VOX", "txtVOXFormatString"},
                                                     {"GSM", "txtGSMFormatString"},
                                                     {"G.723", "txtG723FormatString"},
                                                     {"G.726", "txtG726FormatString"},
                                                     {"A-LAW", "txtULAWFormatString"},
                                                     {"ACM", "Text1"}}};

constexpr std::array<const char*, optionFrequencies.size()> rateCaptions = {
    "8000", "11025 ", "16000", "22050", "24000", "32000", "44100", "48000"};
constexpr int firstChannels = 1; // of opChannels, whose index is the count of channels

int LineOf(FormatBox box) {
    return static_cast<int>(box);
}

QComboBox* BitsBox(const char* name, const QString& format, FormatBox line, const QStringList& items,
                   QWidget* panel) {
    auto* box = new QComboBox(panel);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(FormatPanel::tr("Bits a sample of %1").arg(format));
    box->setToolTip(box->accessibleName());
    box->addItems(items);
    box->setGeometry(at::Control(LineOf(line)));
    return box;
}

// Tab comes to the chosen option of a group, and to no other one.
void TabToChosen(const QButtonGroup& group) {
    for (QAbstractButton* option : group.buttons()) {
        option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

QRadioButton* Option(const QString& name, const QString& caption, const QRect& place, QWidget* panel) {
    auto* option = new QRadioButton(caption, panel);
    option->setObjectName(name);
    option->setGeometry(place);
    return option;
}

} // namespace

FormatPanel::FormatPanel(const SkinPicture& strip, HoverKeeper& hover, const ConverterState& state,
                         OutputSettings& settings, QWidget* window)
    : QWidget(window),
      strip_(strip),
      hover_(hover),
      kit_(this, strip, nullptr, hover),
      state_(state),
      settings_(settings),
      opFreq_(new QButtonGroup(this)),
      opChannels_(new QButtonGroup(this)) {
    setObjectName(QStringLiteral("PictureSet"));
    setAccessibleName(tr("Format settings"));
    setGeometry({at::corner, at::ground.size()});
    MakeTitle();
    MakeRates();
    MakeLines();
    MakeParameters();
    ConnectSettings();
}

void FormatPanel::MakeTitle() {
    auto* title = new QLabel(tr("Format settings"), this);
    title->setObjectName(QStringLiteral("LabelSet"));
    title->setGeometry(at::caption);
    SetInk(title, title->palette().color(QPalette::WindowText), titleFontPixels, QFont::DemiBold);
    imageSetdown_ = kit_.Picture(QStringLiteral("ImageSetdown"), tr("Hide the format settings"),
                                 at::ImageSetdown, hover_.AddGroup(), 0);
}

void FormatPanel::MakeRates() {
    for (size_t i = 0; i < rateCaptions.size(); ++i) {
        const int index = static_cast<int>(i);
        const QRect place = InGrid(at::opFreq, index, at::freqColumns, at::freqStep, at::freqRowStep);
        auto* option =
            Option(QStringLiteral("opFreq(%1)").arg(i), QLatin1String(rateCaptions[i]), place, this);
        option->setAccessibleName(tr("%1 Hz").arg(optionFrequencies[i]));
        option->setToolTip(option->accessibleName());
        opFreq_->addButton(option, index);
    }
    const std::array<QString, 2> captions = {tr("Mono"), tr("Stereo")};
    for (size_t i = 0; i < captions.size(); ++i) {
        const int channels = static_cast<int>(i) + firstChannels;
        opChannels_->addButton(
            Option(QStringLiteral("opChannels(%1)").arg(channels), captions[i], at::opChannels[i], this),
            channels);
    }
}

void FormatPanel::MakeLines() {
    for (size_t i = 0; i < lines.size(); ++i) {
        const int line = static_cast<int>(i);
        auto* caption = new QLabel(QLatin1String(lines[i].caption), this);
        caption->setGeometry(at::Name(line));
        texts_[i] = new FormatTextBox(this);
        texts_[i]->setObjectName(QLatin1String(lines[i].text));
        texts_[i]->setAccessibleName(tr("%1 format").arg(QLatin1String(lines[i].caption)));
        texts_[i]->setGeometry(at::Text(line));
    }
}

void FormatPanel::MakeParameters() {
    udWMAProfile_ = new QSpinBox(this);
    udWMAProfile_->setObjectName(QStringLiteral("udWMAProfile"));
    udWMAProfile_->setRange(smallestWmaProfile, largestWmaProfile);
    udWMAProfile_->setAccessibleName(tr("WMA profile"));
    udWMAProfile_->setToolTip(tr("WMA profile"));
    udWMAProfile_->setGeometry(at::Control(LineOf(FormatBox::txtWMAFormatString)));
    auto* profileText = udWMAProfile_->findChild<QLineEdit*>();
    profileText->setObjectName(QStringLiteral("txtWMAProfile"));
    profileText->setAccessibleName(udWMAProfile_->accessibleName());
    const int group = hover_.AddGroup();
    const std::array<FormatBox, imageSetCount> places = {FormatBox::txtMP3FormatString,
                                                         FormatBox::txtOGGFormatString, FormatBox::Text1};
    const std::array<QString, imageSetCount> tips = {
        tr("MP3 options, also of MP2"), tr("Ogg Vorbis options"),
        tr("Take the format of a WAV file, which switches this output on")};
    for (size_t i = 0; i < imageSet_.size(); ++i) {
        imageSet_[i] = kit_.Picture(QStringLiteral("ImageSet(%1)").arg(i), tips[i],
                                    at::ImageSet(LineOf(places[i])), group, static_cast<int>(i));
    }
    cmbG723Bits_ = BitsBox("cmbG723Bits", QStringLiteral("G.723"), FormatBox::txtG723FormatString,
                           {tr("3 bit"), tr("5 bit")}, this);
    cmbG726Bits_ = BitsBox("cmbG726Bits", QStringLiteral("G.726"), FormatBox::txtG726FormatString,
                           {tr("2 bit"), tr("3 bit"), tr("4 bit"), tr("5 bit")}, this);
}

void FormatPanel::ShowFormatText(FormatBox box, const QString& text) {
    QLineEdit* shown = texts_[static_cast<size_t>(box)];
    shown->setText(text);
    shown->setCursorPosition(0);
}

void FormatPanel::ConnectSettings() {
    const auto choose = [](QButtonGroup* group, int id) {
        const QSignalBlocker quiet(group);
        if (group->button(id) != nullptr) {
            group->button(id)->setChecked(true);
        }
        TabToChosen(*group);
    };
    const auto showWma = [this](qint32 value) {
        const QSignalBlocker quiet(udWMAProfile_);
        udWMAProfile_->setValue(value);
    };
    choose(opFreq_, settings_.opFreq());
    choose(opChannels_, settings_.opChannels());
    cmbG723Bits_->setCurrentIndex(settings_.cmbG723Bits());
    cmbG726Bits_->setCurrentIndex(settings_.cmbG726Bits());
    showWma(state_.udWMAProfile);
    for (int box = 0; box < formatBoxCount; ++box) {
        ShowFormatText(static_cast<FormatBox>(box), settings_.FormatText(static_cast<FormatBox>(box)));
    }
    connect(&settings_, &OutputSettings::FormatTextShown, this, &FormatPanel::ShowFormatText);
    connect(&settings_, &OutputSettings::FrequencyShown, this,
            [this, choose](int index) { choose(opFreq_, index); });
    connect(&settings_, &OutputSettings::ChannelsShown, this,
            [this, choose](int channels) { choose(opChannels_, channels); });
    // By the program an index raises nothing: what is forwarded is `activated`.
    connect(&settings_, &OutputSettings::G723BitsShown, cmbG723Bits_, &QComboBox::setCurrentIndex);
    connect(&settings_, &OutputSettings::G726BitsShown, cmbG726Bits_, &QComboBox::setCurrentIndex);
    connect(&settings_, &OutputSettings::WmaProfileShown, this, showWma);
    connect(opFreq_, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on) {
            TabToChosen(*opFreq_);
            settings_.opFreq_Click(index);
        }
    });
    connect(opChannels_, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on) {
            TabToChosen(*opChannels_);
            settings_.opChannels_Click(index);
        }
    });
    connect(cmbG723Bits_, &QComboBox::activated, &settings_, &OutputSettings::cmbG723Bits_Click);
    connect(cmbG726Bits_, &QComboBox::activated, &settings_, &OutputSettings::cmbG726Bits_Click);
    connect(udWMAProfile_, &QSpinBox::valueChanged, &settings_, &OutputSettings::udWMAProfile_Change);
}

QWidgetList FormatPanel::TabOrder() const {
    QWidgetList order;
    for (QAbstractButton* option : opFreq_->buttons() + opChannels_->buttons()) {
        order.append(option);
    }
    for (size_t i = 0; i < texts_.size(); ++i) {
        order.append(texts_[i]);
        switch (static_cast<FormatBox>(i)) {
        case FormatBox::txtWMAFormatString:
            order.append(udWMAProfile_);
            break;
        case FormatBox::txtMP3FormatString:
            order.append(imageSet_[0]);
            break;
        case FormatBox::txtOGGFormatString:
            order.append(imageSet_[1]);
            break;
        case FormatBox::txtG723FormatString:
            order.append(cmbG723Bits_);
            break;
        case FormatBox::txtG726FormatString:
            order.append(cmbG726Bits_);
            break;
        case FormatBox::Text1:
            order.append(imageSet_[2]);
            break;
        default:
            break;
        }
    }
    order.append(imageSetdown_);
    return order;
}

void FormatPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    strip_.Paint(painter, {}, at::ground);
}

void FormatPanel::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

} // namespace kestrune
