// The format of an output: chosen by one call of a kind, told in words.
#pragma once

#include "components/outcome.h"

#include <QString>
#include <QtGlobal>

namespace kestrune {

// The settings of an MPEG layer 3 encoder. Who sets Preset, AltPreset or CommandLine does it by ApplyPreset
// and its kin of mp3_presets.h, which bring the other fields in line: only those are encoded by.
struct Mp3Options {
    QString commandLine;
    qint16 preset = 0;          // 1 to 11, 0 none
    qint16 altPreset = 0;       // 1 to 5, 0 none
    qint32 maxVbrBitrate = 320; // kbit/s
    qint16 vbrQuality = 4;      // 0 best to 9
    qint32 vbrMethod = -1;      // -1 none, 0 default, 1 old, 2 new, 3 MTRH, 4 ABR
    qint16 abrBitrate = 128;    // kbit/s, 4 to 320
    qint32 channelMode = 1;     // 0 mono, 1 stereo, 2 joint, 3 forced joint, 4 dual
    qint16 quality = 5;         // 0 best to 9
    bool writeVbrHeader = true;
    bool bitReservoir = true;
    bool blockTypesDiffer = true;
    bool shortBlocks = true;
    qint32 deEmphasis = 0; // 0 none, 1 50/15 microseconds, 2 CCITT J.17
    bool isoCompliance = false;
    bool enforceMinBitrate = false;
    qint32 athControl = 0;        // 0 default, 1 only, 2 disabled, 3 only for short blocks
    qint32 lowpassFrequency = -1; // Hz, -1 off
    qint32 highpassFrequency = -1;
    qint32 lowpassWidth = 0; // Hz
    qint32 highpassWidth = 0;
    bool crcProtection = false;
    qint32 frequency = 44100; // Hz
    qint32 channels = 2;
    qint32 bitrate = 128; // kbit/s
    // The least one of a rate that varies, where `bitrate` only says about how much comes of it; 0:
    // `bitrate`.
    qint32 leastVbrBitrate = 0;
    bool operator==(const Mp3Options&) const = default;
};

// Type codes of headerless data.
enum RawType : qint32 { RawPcm = 1, RawALaw = 2, RawMuLaw = 3 };

// What every object that encodes lets a tool choose, the file object among them. One thread.
class AudioFormat {
public:
    AudioFormat() = default;
    AudioFormat(const AudioFormat&) = delete;
    AudioFormat& operator=(const AudioFormat&) = delete;
    virtual ~AudioFormat() = default;

    // Each replaces the current format. NotSupported when the kind does not offer the combination;
    // GetFormatText is then empty. Frequencies in Hz, rates in kbit/s, 1 or 2 channels.

    virtual Outcome SetFormatFromFile(const QString& file) = 0;
    virtual Outcome SetFormatPCMFreq(qint32 frequency, qint32 channels, qint32 bits) = 0;
    virtual Outcome SetFormatRaw(qint32 type, qint32 frequency, qint32 channels, qint32 bits) = 0;
    virtual Outcome SetFormatADPCM(qint32 frequency, qint32 channels) = 0;
    virtual Outcome SetFormatGSM(qint32 frequency) = 0;
    virtual Outcome SetFormatVOX(qint32 frequency) = 0;
    virtual Outcome SetFormatDSP() = 0;
    virtual Outcome SetFormatMP2(qint32 frequency, qint32 bitrateKbps, qint32 channels) = 0;
    virtual Outcome SetFormatMP3(qint32 frequency, qint32 bitrateKbps, qint32 channels) = 0;
    virtual Outcome SetFormatMP3Options(const Mp3Options& options) = 0;
    virtual Outcome SetFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                       qint32 minimumKbps, qint32 maximumKbps,
                                       qint32 quality) = 0; // quality -1: by bit rate
    virtual bool IsAvailableFormatOggVorbis(qint32 frequency, qint32 channels, qint32 nominalKbps,
                                            qint32 minimumKbps, qint32 maximumKbps) = 0;
    virtual Outcome SetFormatWMA(qint32 profile) = 0;
    virtual Outcome SetFormatG721(qint32 frequency) = 0;
    virtual Outcome SetFormatG723(qint32 frequency, qint32 bits) = 0;
    virtual Outcome SetFormatG726(qint32 frequency, qint32 bits) = 0;
    // Lets the component itself ask for a format. Nothing is offered: NotSupported.
    virtual Outcome SelectFormat() = 0;

    // --- The format that was chosen ---

    // In words, with the rate as "44,100" and the bit rate as "128 kbps"; empty if there is none.
    virtual QString GetFormatText() const = 0;
    virtual qint32 GetFormatBits() const = 0; // bits a sample
    virtual qint32 GetRawType() const = 0;    // of the last SetFormatRaw
};

} // namespace kestrune
