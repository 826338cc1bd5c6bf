// A display that keeps what it is told.
#pragma once

#include "components/audio_display.h"

#include <QMap>

namespace kestrune {

class FakeAudioDisplay : public KSTAudioDisplay1 {
public:
    QList<QList<qint16>> blocks; // every block it was given, empty ones too

    using KSTAudioDisplay1::KSTAudioDisplay1;

    Outcome SetProperty(int number, qint32 value) override {
        if (IsColour(number) && (static_cast<quint32>(value) >> 24U) == 0xFFU) {
            value &= 0xFFFFFF;
        }
        if (!values.contains(number) || !Allowed(number).contains(value)) {
            return Outcome::NotSupported;
        }
        if (values[number] != value) {
            values[number] = value;
            emit PropertyChanged(number, value);
        }
        return Outcome::Ok;
    }
    qint32 Property(int number) const override { return values.value(number); }
    void DrawBlock(const QList<qint16>& samples) override { blocks.append(samples); }

private:
    struct Range {
        qint32 least;
        qint32 most;
        bool contains(qint32 value) const {
            const bool isFftSize = least == 64;
            return value >= least && value <= most &&
                   (!isFftSize || value == 64 || value == 256 || value == 1024 || value == 4096 ||
                    value == 16384);
        }
    };
    static bool IsColour(int number) { return number >= 12 && number <= 17; }
    static Range Allowed(int number) {
        switch (number) {
        case 10:
            return {0, 3};
        case 11:
            return {0, 4};
        case 18:
            return {64, 16384};
        case 19:
            return {0, 100};
        case 20:
            return {0, 10};
        case 21:
            return {1, 2};
        default:
            return {0, 0xFFFFFF};
        }
    }

    QMap<int, qint32> values = {{10, 2},        {11, 0},        {12, 0x141414}, {13, 0x3C424C},
                                {14, 0xD7DAF5}, {15, 0x646C7C}, {16, 0x8080FF}, {17, 0xFFB040},
                                {18, 4096},     {19, 70},       {20, 2},        {21, 2}};
};

} // namespace kestrune
