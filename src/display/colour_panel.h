// How the display looks: its colours, border, channels and marks. It takes the list's place in the window.
#pragma once

#include "display/colour_swatch_widget.h"
#include "display/display_colours.h"

#include <QButtonGroup>
#include <QColor>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QWidget>
#include <functional>

namespace kestrune {

// Objects ListView1 (the colours' names), Picture7 (the colour), Command1, Option1 to Option4 (border),
// Option10 and Option11 (channels), UpDown1 and UpDown2. 360 x 119. Window thread.
class ColourPanel : public QWidget {
    Q_OBJECT
public:
    // The present value of a property of the display. Colours are 0xRRGGBB.
    using ValueOf = std::function<qint32(int number)>;
    // Lets the user choose; an invalid colour when nothing was chosen.
    using ChooseColour = std::function<QColor(const QColor& seed)>;

    // Without `chooseColour` the dialog "Choice Color" of the program's own look is opened. What the
    // functions refer to must outlive the panel.
    explicit ColourPanel(ValueOf valueOf, ChooseColour chooseColour = {}, QWidget* parent = nullptr);

    // Fills the list, selects its first row and shows what the display holds.
    void FillColourList();
    // Shows what the display holds now. Raises nothing.
    void ShowValues();
    // Off while a file plays.
    void SetChangeColorEnabled(bool enabled);
    QSize sizeHint() const override;

signals:
    // The user has chosen. Colours are 0xRRGGBB.
    void PropertyChosen(int number, qint32 value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeColours();
    void MakeBorders();
    void MakeChannels();
    void MakeNumbers();
    QLabel* Caption(const QString& text, const QRect& place);
    void Heading(const QString& text, const QRect& place);
    QSpinBox* Number(const QString& name, const QString& caption, int property, int largest,
                     const QRect& place);
    void ShowColour(int row);
    void ChangeColour();

    ValueOf valueOf_;
    ChooseColour chooseColour_;
    QListWidget* colours_ = nullptr;
    ColourSwatchWidget* swatch_ = nullptr;
    QPushButton* change_ = nullptr;
    QButtonGroup* borders_ = nullptr;
    QButtonGroup* channels_ = nullptr;
    QSpinBox* maxLevel_ = nullptr;
    QSpinBox* outLinesHeight_ = nullptr;
};

} // namespace kestrune
