// The two controls that every option dialog of an encoder has.
#pragma once

#include <QComboBox>
#include <QSlider>

namespace kestrune {

// The parent owns them. The sampling frequencies, with Hz as the data of each entry.
QComboBox* MakeFrequencyList(QWidget* parent);
// A slider over the positions of the bit rate table.
QSlider* MakeBitrateSlider(const QString& name, const QString& accessibleName, QWidget* parent);

} // namespace kestrune
