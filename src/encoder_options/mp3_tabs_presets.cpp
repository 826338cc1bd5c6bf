// The tabs that set many options at once: presets, each with what it comes to beside it, and the command
// line.
#include "encoder_options/mp3_tabs.h"

#include "encoder_options/mp3_presets.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>

namespace kestrune {

namespace {

using ApplyNumber = void (*)(Mp3Options&, int);

// Numbers 1 to `count` in columns of `rows`. Returns the group of the options by number.
template <size_t count>
QButtonGroup* AddOptions(QWidget* page, const QString& name, const std::array<const char*, count>& texts,
                         int rows, ApplyNumber apply) {
    auto* grid = new QGridLayout(page);
    auto* group = new QButtonGroup(page);
    for (int number = 1; number <= static_cast<int>(count); ++number) {
        const QString text = Mp3Tabs::tr(texts[static_cast<size_t>(number) - 1]);
        auto* option = new QRadioButton(text, page);
        option->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(number));
        Mp3Options options;
        apply(options, number);
        const QString summary = Mp3Summary(options);
        option->setAccessibleDescription(summary);
        group->addButton(option, number);
        const int row = (number - 1) % rows;
        const int column = (number - 1) / rows * 2;
        QLabel* meaning = MakeMutedLabel(summary, page);
        // Of one height, so that both texts stand on one line.
        option->setFixedHeight(fieldHeight);
        meaning->setFixedHeight(fieldHeight);
        grid->addWidget(option, row, column);
        grid->addWidget(meaning, row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    grid->setHorizontalSpacing(sideMargin);
    grid->setVerticalSpacing(rowGap);
    grid->setRowStretch(rows, 1);
    group->button(1)->setChecked(true);
    return group;
}

} // namespace

QWidget* Mp3Tabs::MakePresets() {
    constexpr int rows = 6;
    auto* page = new QWidget;
    const QButtonGroup* group = AddOptions(page, QStringLiteral("opPreset"), presetTexts, rows, &ApplyPreset);
    connect(group, &QButtonGroup::idToggled, this, [this](int preset, bool isOn) {
        if (isOn) {
            emit PresetChosen(preset);
        }
    });
    return page;
}

QWidget* Mp3Tabs::MakeAltPresets() {
    constexpr int rows = 5;
    auto* page = new QWidget;
    const QButtonGroup* group =
        AddOptions(page, QStringLiteral("opAltPreset"), altPresetTexts, rows, &ApplyAltPreset);
    connect(group, &QButtonGroup::idToggled, this, [this](int altPreset, bool isOn) {
        if (isOn) {
            emit AltPresetChosen(altPreset);
        }
    });
    return page;
}

QWidget* Mp3Tabs::MakeCommandLine() {
    constexpr int columns = 2;
    constexpr int exampleHeight = 18;
    auto* page = new QWidget;
    txtCommLine_ = new QLineEdit(page);
    txtCommLine_->setObjectName(QStringLiteral("txtCommLine"));
    txtCommLine_->setAccessibleName(tr("Command Line"));
    auto* grid = new QGridLayout(page);
    grid->setHorizontalSpacing(windowMargin);
    grid->setVerticalSpacing(rowGap);
    grid->addWidget(txtCommLine_, 0, 0, 1, 2 * columns);
    grid->addWidget(MakeMutedLabel(tr("Such as these. What is not known is passed over."), page), 1, 0, 1,
                    2 * columns);
    const int rows = static_cast<int>(commandLineExamples.size()) / columns;
    for (int index = 0; index < rows * columns; ++index) {
        const CommandLineExample& example = commandLineExamples[static_cast<size_t>(index)];
        const int column = index / rows * 2;
        grid->setRowMinimumHeight(2 + index % rows, exampleHeight);
        grid->addWidget(MakeLabel({}, QLatin1String(example.option), page), 2 + index % rows, column);
        grid->addWidget(MakeMutedLabel(tr(example.meaning), page), 2 + index % rows, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    grid->setRowStretch(2 + rows, 1);
    return page;
}

} // namespace kestrune
