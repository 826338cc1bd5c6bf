#include "playback/equalizer_bands.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr float smallestRangeDb = 2;

bool IsBand(int number) {
    return number >= equalizerFirstBand && number < equalizerFirstBand + equalizerBands;
}

size_t BandOf(int number) {
    return static_cast<size_t>(number - equalizerFirstBand);
}

} // namespace

float EqualizerBands::Cut(float gainDb) const {
    return std::isfinite(gainDb) ? std::clamp(gainDb, -LargestGainDb(), LargestGainDb()) : 0.0F;
}

float EqualizerBands::Property(int number) const {
    if (number == equalizerRange) {
        return rangeDb_;
    }
    return IsBand(number) ? gainsDb_[BandOf(number)] : 0.0F;
}

Outcome EqualizerBands::SetProperty(int number, float value) {
    if (IsBand(number)) {
        EqualizerGains gainsDb = gainsDb_;
        gainsDb[BandOf(number)] = value;
        SetGains(gainsDb);
        return Outcome::Ok;
    }
    if (number != equalizerRange || !std::isfinite(value)) {
        return Outcome::NotSupported;
    }
    const float before = rangeDb_;
    rangeDb_ = std::clamp(value, smallestRangeDb, 2 * equalizerLargestGainDb);
    if (rangeDb_ != before) {
        std::transform(gainsDb_.begin(), gainsDb_.end(), gainsDb_.begin(),
                       [this](float gainDb) { return Cut(gainDb); });
        emit Changed();
    }
    return Outcome::Ok;
}

void EqualizerBands::SetGains(const EqualizerGains& gainsDb) {
    EqualizerGains cutDb{};
    std::transform(gainsDb.begin(), gainsDb.end(), cutDb.begin(),
                   [this](float gainDb) { return Cut(gainDb); });
    if (cutDb != gainsDb_) {
        gainsDb_ = cutDb;
        emit Changed();
    }
}

float StepGain(float gainDb, int steps) {
    if (steps == 0) {
        return gainDb;
    }
    // A step up from 0.5 ends at 1, a step down at 0.
    const float from = steps > 0 ? std::floor(gainDb) : std::ceil(gainDb);
    return from + static_cast<float>(steps);
}

QString BandLabel(int band) {
    const double hz = equalizerCentresHz[static_cast<size_t>(band)];
    if (hz < 1000) {
        return QString::number(hz, 'f', 0);
    }
    const bool isWhole = std::fmod(hz, 1000.0) == 0;
    return QString::number(hz / 1000, 'f', isWhole ? 0 : 1) + u'k';
}

QString BandFrequency(int band) {
    const auto hz = static_cast<int>(equalizerCentresHz[static_cast<size_t>(band)]);
    return QCoreApplication::translate("kestrune::EqualizerPanel", "%1 Hz")
        .arg(QLocale(QLocale::English).toString(hz));
}

QString GainText(float gainDb) {
    const double rounded = std::round(gainDb * 2) / 2;
    const QChar sign = rounded > 0 ? QChar(u'+') : QChar(0x2212);
    const bool isWhole = rounded == std::round(rounded);
    const QString size = QString::number(std::abs(rounded), 'f', isWhole ? 0 : 1);
    return QCoreApplication::translate("kestrune::EqualizerPanel", "%1 dB")
        .arg((rounded == 0 ? QString() : QString(sign)) + size);
}

} // namespace kestrune
