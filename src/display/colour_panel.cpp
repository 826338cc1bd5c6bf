#include "display/colour_panel.h"

#include <QColorDialog>
#include <QPainter>
#include <QRadioButton>
#include <QSignalBlocker>
#include <array>
#include <utility>

namespace kestrune {

namespace {

constexpr int panelWidth = 360;
constexpr int panelHeight = 119;
constexpr QRgb colourMask = 0xFFFFFF;
constexpr int largestMaxLevel = 100; // per cent of the scale

// Three columns: names, the colour, frame and channels; the two numbers stand in one row below.
constexpr QRect listPlace(6, 6, 100, 107);
constexpr int listRow = 17;
constexpr QRect swatchPlace(114, 6, 96, 48);
constexpr QRect buttonPlace(114, 60, 96, 23);
constexpr QRect maxLevelPlace(114, 92, 96, 21);
constexpr QRect outLinesPlace(218, 92, 136, 21);
constexpr int numberWidth = 42;
constexpr int rightColumn = 218;
constexpr int rightWidth = 136;
constexpr int firstOption = 73; // width of the first of two options beside each other
constexpr int optionHeight = 17;
constexpr int captionHeight = 14;
constexpr int borderTop = 4;
constexpr int channelsTop = 55;

QRect CaptionPlace(int top) {
    return {rightColumn, top, rightWidth, captionHeight};
}

// Two to a row, below the caption.
QRect OptionPlace(int captionTop, int index) {
    const int top = captionTop + captionHeight + index / 2 * optionHeight;
    return index % 2 == 0 ? QRect(rightColumn, top, firstOption, optionHeight)
                          : QRect(rightColumn + firstOption, top, rightWidth - firstOption, optionHeight);
}

QColor ColourOf(qint32 value) {
    return QColor::fromRgb(static_cast<QRgb>(value) & colourMask);
}

QColor ChooseByDialog(const QColor& seed, QWidget* parent) {
    return QColorDialog::getColor(seed, parent, ColourPanel::tr("Choice Color"),
                                  QColorDialog::DontUseNativeDialog);
}

QRadioButton* Option(QButtonGroup* group, int id, const QString& name, const QString& text,
                     const QString& accessibleName, const QRect& place, QWidget* parent) {
    auto* option = new QRadioButton(text, parent);
    option->setObjectName(name);
    option->setAccessibleName(accessibleName);
    option->setGeometry(place);
    group->addButton(option, id);
    return option;
}

// Tab goes to the option that is on, the arrow keys to the others.
void Check(QButtonGroup* group, int id) {
    if (group->button(id) == nullptr) {
        return;
    }
    const QSignalBlocker quiet(group);
    for (QAbstractButton* button : group->buttons()) {
        const bool isOn = group->id(button) == id;
        button->setChecked(isOn || button->isChecked());
        button->setFocusPolicy(isOn ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

} // namespace

ColourPanel::ColourPanel(ValueOf valueOf, ChooseColour chooseColour, QWidget* parent)
    : QWidget(parent), valueOf_(std::move(valueOf)), chooseColour_(std::move(chooseColour)) {
    setObjectName(QStringLiteral("ColourPanel"));
    setAccessibleName(tr("Display colours"));
    if (!chooseColour_) {
        chooseColour_ = [this](const QColor& seed) { return ChooseByDialog(seed, window()); };
    }
    MakeColours();
    MakeBorders();
    MakeChannels();
    MakeNumbers();
    setFocusProxy(colours_);
    FillColourList();
}

QSize ColourPanel::sizeHint() const {
    return {panelWidth, panelHeight};
}

QLabel* ColourPanel::Caption(const QString& text, const QRect& place) {
    auto* caption = new QLabel(text, this);
    caption->setGeometry(place);
    return caption;
}

void ColourPanel::Heading(const QString& text, const QRect& place) {
    Caption(text, place)->setForegroundRole(QPalette::PlaceholderText); // muted
}

void ColourPanel::MakeColours() {
    colours_ = new QListWidget(this);
    colours_->setObjectName(QStringLiteral("ListView1"));
    colours_->setAccessibleName(tr("Colour"));
    colours_->setGeometry(listPlace);
    colours_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    colours_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    colours_->setUniformItemSizes(true);
    connect(colours_, &QListWidget::currentRowChanged, this, &ColourPanel::ShowColour);
    // A click on the row that is current already shows it afresh.
    connect(colours_, &QListWidget::itemClicked, this, [this] { ShowColour(colours_->currentRow()); });

    swatch_ = new ColourSwatchWidget(this);
    swatch_->setObjectName(QStringLiteral("Picture7"));
    swatch_->setGeometry(swatchPlace);

    change_ = new QPushButton(tr("Change Color"), this);
    change_->setObjectName(QStringLiteral("Command1"));
    change_->setGeometry(buttonPlace);
    change_->setAutoDefault(false);
    connect(change_, &QPushButton::clicked, this, &ColourPanel::ChangeColour);
    connect(colours_, &QListWidget::itemActivated, change_, &QPushButton::click);
}

void ColourPanel::MakeChannels() {
    Heading(tr("Channels"), CaptionPlace(channelsTop));
    channels_ = new QButtonGroup(this);
    Option(channels_, 1, QStringLiteral("Option10"), tr("Mono"), tr("Channels: Mono"),
           OptionPlace(channelsTop, 0), this);
    Option(channels_, 2, QStringLiteral("Option11"), tr("Stereo"), tr("Channels: Stereo"),
           OptionPlace(channelsTop, 1), this);
    connect(channels_, &QButtonGroup::idToggled, this, [this](int id, bool isOn) {
        if (isOn) {
            emit PropertyChosen(DisplayChannels, id);
        }
    });
}

void ColourPanel::MakeBorders() {
    Heading(tr("Border"), CaptionPlace(borderTop));
    borders_ = new QButtonGroup(this);
    const std::array<QString, 4> names = {tr("None"), tr("Single"), tr("Lowered"), tr("Raised")};
    for (int style = 0; style < 4; ++style) {
        const QString& text = names[static_cast<size_t>(style)];
        Option(borders_, style, QStringLiteral("Option%1").arg(style + 1), text, tr("Border: %1").arg(text),
               OptionPlace(borderTop, style), this);
    }
    connect(borders_, &QButtonGroup::idToggled, this, [this](int id, bool isOn) {
        if (isOn) {
            emit PropertyChosen(DisplayBorderStyle, id);
        }
    });
}

QSpinBox* ColourPanel::Number(const QString& name, const QString& caption, int property, int largest,
                              const QRect& place) {
    QLabel* label = Caption(caption, place.adjusted(0, 0, -numberWidth, 0));
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto* number = new QSpinBox(this);
    label->setBuddy(number);
    number->setObjectName(name);
    number->setAccessibleName(caption.chopped(1));
    number->setRange(0, largest);
    number->setAlignment(Qt::AlignRight);
    number->setGeometry(place.right() + 1 - numberWidth, place.top(), numberWidth, place.height());
    connect(number, &QSpinBox::valueChanged, this,
            [this, property](int value) { emit PropertyChosen(property, value); });
    return number;
}

void ColourPanel::MakeNumbers() {
    maxLevel_ =
        Number(QStringLiteral("UpDown1"), tr("MaxLevel:"), DisplayMaxLevel, largestMaxLevel, maxLevelPlace);
    outLinesHeight_ = Number(QStringLiteral("UpDown2"), tr("OutLinesHeight:"), DisplayOutLinesHeight,
                             largestOutLinesHeight, outLinesPlace);
}

void ColourPanel::FillColourList() {
    {
        const QSignalBlocker quiet(colours_);
        colours_->clear();
        for (const DisplayColour& colour : displayColours) {
            auto* row = new QListWidgetItem(tr(colour.name), colours_);
            row->setSizeHint({0, listRow});
        }
        colours_->setCurrentRow(0);
    }
    ShowValues();
}

void ColourPanel::ShowValues() {
    ShowColour(colours_->currentRow());
    Check(borders_, valueOf_(DisplayBorderStyle));
    Check(channels_, valueOf_(DisplayChannels));
    const QSignalBlocker quietMaxLevel(maxLevel_);
    const QSignalBlocker quietHeight(outLinesHeight_);
    maxLevel_->setValue(valueOf_(DisplayMaxLevel));
    outLinesHeight_->setValue(valueOf_(DisplayOutLinesHeight));
}

void ColourPanel::SetChangeColorEnabled(bool enabled) {
    change_->setEnabled(enabled);
}

void ColourPanel::ShowColour(int row) {
    if (row < 0) {
        return;
    }
    const DisplayColour& shown = displayColours[static_cast<size_t>(row)];
    const QColor colour = ColourOf(valueOf_(shown.property));
    swatch_->SetColour(colour);
    swatch_->setAccessibleName(QStringLiteral("%1: %2").arg(tr(shown.name), colour.name().toUpper()));
}

void ColourPanel::ChangeColour() {
    const int row = colours_->currentRow();
    const QColor chosen = chooseColour_(swatch_->Colour());
    if (row < 0 || !chosen.isValid()) {
        return;
    }
    swatch_->SetColour(chosen);
    emit PropertyChosen(displayColours[static_cast<size_t>(row)].property,
                        static_cast<qint32>(chosen.rgb() & colourMask));
    ShowColour(row);
}

void ColourPanel::showEvent(QShowEvent* event) {
    ShowValues();
    QWidget::showEvent(event);
}

// An inset plate of the body.
void ColourPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 22));
    painter.drawRoundedRect(area, 4, 4);
    const QRectF plate = area.adjusted(0, 0, 0, -1);
    QLinearGradient body(plate.topLeft(), plate.bottomLeft());
    body.setColorAt(0, QColor(0x20, 0x23, 0x28));
    body.setColorAt(1, QColor(0x27, 0x2B, 0x31));
    painter.setBrush(body);
    painter.drawRoundedRect(plate, 4, 4);
    painter.setBrush(Qt::NoBrush);
    for (int depth = 0; depth < 3; ++depth) {
        painter.setPen(QPen(QColor(0, 0, 0, 90 - depth * 28), 1));
        painter.drawLine(QPointF(3, depth + 0.5), QPointF(plate.right() - 3, depth + 0.5));
    }
}

} // namespace kestrune
