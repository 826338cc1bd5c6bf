// The format that the SetFormat calls chose, for every object that encodes.
#pragma once

#include "backends/formats/output_format.h"
#include "components/audio_format.h"

#include <optional>

namespace kestrune {

// What the encoders of this folder can write, and what headerless files are read as. One thread.
class FormatChoice : public virtual AudioFormat {
public:
    Outcome SetFormatFromFile(const QString& file) override;
    Outcome SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) override;
    Outcome SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) override;
    Outcome SetFormatADPCM(qint32 frequency, qint32 channels) override;
    Outcome SetFormatGSM(qint32 frequency) override;
    Outcome SetFormatVOX(qint32 frequency) override;
    Outcome SetFormatDSP() override;
    Outcome SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) override;
    Outcome SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) override;
    Outcome SetFormatMP3Options(const Mp3Options& options) override;
    Outcome SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps, qint32 minimumKbps,
                               qint32 maximumKbps, qint32 quality) override;
    bool IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps, qint32 minimumKbps,
                                    qint32 maximumKbps) override;
    Outcome SetFormatWMA(qint32 profile) override;
    Outcome SetFormatG721(qint32 frequency) override;
    Outcome SetFormatG723(qint32 frequency, qint32 bits) override;
    Outcome SetFormatG726(qint32 frequency, qint32 bits) override;
    Outcome SelectFormat() override;

    QString GetFormatText() const override;
    qint32 GetFormatBits() const override;
    qint32 GetRawType() const override;

protected:
    // What a file of this name is written in: ".mp3", ".mp2" and ".ogg" by the last format of their kind that
    // their encoder took, or a usual one; all others by the current one. None if none was set.
    std::optional<OutputFormat> FormatFor(const QString& file) const;
    const HeaderlessFormats& Headerless() const { return headerless_; }

private:
    // Makes `format` the current one if `valid`, else leaves none.
    Outcome Choose(const OutputFormat& format, bool valid);
    // As Choose; a format that there is becomes also the one of its extension.
    Outcome ChooseKept(const std::optional<OutputFormat>& format, std::optional<OutputFormat>& kept);

    OutputFormat format_;
    // The last ones that their encoders took; none: the usual one.
    std::optional<OutputFormat> mp3_;
    std::optional<OutputFormat> mp2_;
    std::optional<OutputFormat> vorbis_;
    HeaderlessFormats headerless_;
};

} // namespace kestrune
