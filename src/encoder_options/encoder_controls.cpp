#include "encoder_options/encoder_controls.h"

#include "encoder_options/encoder_lists.h"
#include "skin/dialog_controls.h"

namespace kestrune {

QComboBox* MakeFrequencyList(QWidget* parent) {
    QComboBox* list = MakeList(QStringLiteral("cmbFrequency"), QComboBox::tr("Sampling Frequency"), parent);
    for (const SamplingFrequency& frequency : samplingFrequencies) {
        list->addItem(QString::fromLatin1(frequency.text), frequency.hz);
    }
    return list;
}

QSlider* MakeBitrateSlider(const QString& name, const QString& accessibleName, QWidget* parent) {
    constexpr int page = 3;
    auto* slider = new QSlider(Qt::Horizontal, parent);
    slider->setObjectName(name);
    slider->setAccessibleName(accessibleName);
    slider->setRange(0, lastBitRateIndex);
    slider->setPageStep(page);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(1);
    return slider;
}

} // namespace kestrune
