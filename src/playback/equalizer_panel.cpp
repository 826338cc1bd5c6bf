#include "playback/equalizer_panel.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <cmath>

namespace kestrune {

EqualizerPanel::EqualizerPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("KSTEqualizer21"));
    setAccessibleName(tr("Equalizer"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 4, 4, 4);
    for (size_t band = 0; band < sliders_.size(); ++band) {
        auto* slider = new QSlider(Qt::Vertical, this);
        slider->setObjectName(QStringLiteral("Band(%1)").arg(band));
        slider->setAccessibleName(tr("Band %1").arg(band + 1));
        slider->setRange(-largestGainDb, largestGainDb);
        connect(slider, &QSlider::valueChanged, this, [this, band](int gainDb) {
            gainsDb_[band] = static_cast<float>(gainDb);
            emit GainsChanged(gainsDb_);
        });
        row->addWidget(slider);
        sliders_[band] = slider;
    }
}

void EqualizerPanel::ShowGains(const EqualizerGains& gainsDb) {
    gainsDb_ = gainsDb;
    for (size_t band = 0; band < sliders_.size(); ++band) {
        const QSignalBlocker quiet(sliders_[band]);
        sliders_[band]->setValue(static_cast<int>(std::lround(gainsDb[band])));
    }
}

} // namespace kestrune
