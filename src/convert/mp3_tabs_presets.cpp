// The two tabs of presets: each with what it comes to beside it.
#include "convert/mp3_tabs.h"

#include "components/mp3_presets.h"

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
    QGridLayout* grid = MakeGrid(page);
    auto* group = new QButtonGroup(page);
    for (int number = 1; number <= static_cast<int>(count); ++number) {
        const QString text = QLatin1String(texts[static_cast<size_t>(number) - 1]);
        auto* option = new QRadioButton(text, page);
        option->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(number));
        Mp3Options options;
        apply(options, number);
        const QString summary = Mp3Summary(options);
        option->setAccessibleDescription(summary);
        group->addButton(option, number);
        const int row = (number - 1) % rows;
        const int column = (number - 1) / rows * 2;
        grid->addWidget(option, row, column);
        grid->addWidget(MakeMutedLabel(summary, page), row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    grid->setHorizontalSpacing(windowMargin);
    grid->setRowStretch(rows, 1);
    group->button(1)->setChecked(true);
    return group;
}

} // namespace

QWidget* Mp3Tabs::MakePresets() {
    constexpr int rows = 6;
    auto* page = new QWidget;
    const QButtonGroup* group = AddOptions(page, QStringLiteral("opPreset"), presetTexts, rows, &ApplyPreset);
    connect(group, &QButtonGroup::idClicked, this, &Mp3Tabs::PresetChosen);
    return page;
}

QWidget* Mp3Tabs::MakeAltPresets() {
    constexpr int rows = 5;
    auto* page = new QWidget;
    const QButtonGroup* group =
        AddOptions(page, QStringLiteral("opAltPreset"), altPresetTexts, rows, &ApplyAltPreset);
    connect(group, &QButtonGroup::idClicked, this, &Mp3Tabs::AltPresetChosen);
    return page;
}

} // namespace kestrune
