// PictureSet: the panel with the parameters of the output formats, which lies on the converter window.
#pragma once

#include "convert/format_panel_layout.h"
#include "convert/output_settings.h"
#include "skin/hover_keeper.h"
#include "skin/image_button.h"
#include "skin/window_kit.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QWidget>
#include <array>

namespace kestrune {

inline constexpr int imageSetCount = 3;

// Shows the settings and follows them; forwards what is chosen. What opens a dialog, and the button that
// hides the panel, are left to the window. Window thread.
class FormatPanel : public QWidget {
    Q_OBJECT
public:
    // All but the window must outlive the panel.
    FormatPanel(const SkinPicture& strip, HoverKeeper& hover, const ConverterState& state,
                OutputSettings& settings, QWidget* window);

    ImageButton* ImageSet(int index) const { return imageSet_[static_cast<size_t>(index)]; }
    ImageButton* ImageSetdown() const { return imageSetdown_; }
    // Its controls in the order of the Tab key.
    QWidgetList TabOrder() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    // The window below the panel is not clicked through it.
    void mousePressEvent(QMouseEvent* event) override;

private:
    void MakeTitle();
    void MakeRates();
    void MakeLines();
    void MakeParameters();
    void ConnectSettings();
    void ShowFormatText(FormatBox box, const QString& text);

    const SkinPicture& strip_;
    HoverKeeper& hover_;
    WindowKit kit_;
    const ConverterState& state_;
    OutputSettings& settings_;
    QButtonGroup* opFreq_;
    QButtonGroup* opChannels_;
    QComboBox* cmbG723Bits_ = nullptr;
    QComboBox* cmbG726Bits_ = nullptr;
    QSpinBox* udWMAProfile_ = nullptr;
    std::array<QLineEdit*, formatBoxCount> texts_{};
    std::array<ImageButton*, imageSetCount> imageSet_{};
    ImageButton* imageSetdown_ = nullptr;
};

} // namespace kestrune
