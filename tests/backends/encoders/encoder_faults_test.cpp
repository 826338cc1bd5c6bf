// What every encoder does at the edges: no samples, pieces of any size, a full disk, figures it can't store.
#include "backends/encoders/adpcm_encoder.h"
#include "backends/encoders/encoder_support.h"
#include "backends/encoders/g72x_encoder.h"
#include "backends/encoders/gsm_encoder.h"
#include "backends/encoders/pcm_encoder.h"
#include "backends/encoders/vox_encoder.h"
#include "backends/encoders/wave_writer.h"
#include "backends/formats/wave_header.h"
#include "support/chord.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace kestrune {

namespace {

constexpr int frames = 30011;

std::vector<qint16> SoundFor(const EncoderCase& encoder) {
    return Chord(7).Samples(frames, encoder.format.channels, encoder.format.rateHz);
}

// Ok when all went well to the end, else what the first call that failed said.
Outcome WriteAll(SampleEncoder& encoder, QIODevice& out, const std::vector<qint16>& samples) {
    const EncoderInput input = encoder.Input();
    const qint64 count = static_cast<qint64>(samples.size()) / input.channels;
    const std::vector<float> floats(samples.begin(), samples.end());
    Outcome outcome = encoder.Begin(out);
    if (outcome == Outcome::Ok) {
        outcome = input.takesFloats ? encoder.WriteFloats(floats.data(), count)
                                    : encoder.WriteIntegers(samples.data(), count);
    }
    return outcome == Outcome::Ok ? encoder.Finish() : outcome;
}

} // namespace

TEST(EncoderFaults, PiecesOfAnySizeGiveTheSameFile) {
    for (const EncoderCase& encoder : SimpleEncoders()) {
        SCOPED_TRACE(encoder.name);
        const std::vector<qint16> sound = SoundFor(encoder);
        const QByteArray whole = Encoded(*encoder.make(encoder.format), sound, frames);
        EXPECT_TRUE(whole == Encoded(*encoder.make(encoder.format), sound, 0));
        EXPECT_TRUE(whole == Encoded(*encoder.make(encoder.format), sound, 1));
        EXPECT_GT(whole.size(), frames / 5);
    }
}

TEST(EncoderFaults, InputTellsTheFormatsRateAndChannels) {
    for (const EncoderCase& encoder : SimpleEncoders()) {
        SCOPED_TRACE(encoder.name);
        const EncoderInput input = encoder.make(encoder.format)->Input();
        EXPECT_EQ(input.rateHz, encoder.format.rateHz);
        EXPECT_EQ(input.channels, encoder.format.channels);
    }
}

TEST(EncoderFaults, NoSampleIsAValidFile) {
    for (const EncoderCase& encoder : SimpleEncoders()) {
        SCOPED_TRACE(encoder.name);
        const QByteArray bytes = Encoded(*encoder.make(encoder.format), {});
        const bool headerless = !bytes.startsWith("RIFF");
        if (headerless) {
            EXPECT_TRUE(bytes.isEmpty());
            continue;
        }
        QBuffer device;
        device.setData(bytes);
        ASSERT_TRUE(device.open(QIODevice::ReadOnly));
        const std::optional<WaveHeader> header = ReadWaveHeader(device);
        ASSERT_TRUE(header.has_value());
        EXPECT_EQ(header->dataBytes, 0);
        EXPECT_EQ(header->dataOffset, bytes.size());
        EXPECT_EQ(header->rateHz, encoder.format.rateHz);
    }
}

TEST(EncoderFaults, AFullDiskIsToldAtOnceOrAtTheEnd) {
    for (const EncoderCase& encoder : SimpleEncoders()) {
        const std::vector<qint16> sound = SoundFor(encoder);
        SwallowingDevice endless(Q_INT64_C(1) << 40);
        ASSERT_EQ(WriteAll(*encoder.make(encoder.format), endless, sound), Outcome::Ok) << encoder.name;
        for (const qint64 room : {endless.size() - 1, endless.size() / 2, Q_INT64_C(20), Q_INT64_C(0)}) {
            SCOPED_TRACE(testing::Message() << encoder.name << " with room for " << room);
            SwallowingDevice full(room);
            EXPECT_EQ(WriteAll(*encoder.make(encoder.format), full, sound), Outcome::WriteFailed);
        }
    }
}

TEST(EncoderFaults, WhatAFormatCannotHoldIsRefusedWithNothingWritten) {
    OutputFormat longBlocks = FormatFor(FormatKind::Template, 44100, 2, 4);
    longBlocks.waveTag = WaveTagImaAdpcm;
    longBlocks.waveFormat = QByteArray(12, '\0') + QByteArray("\x00\x40", 2) + QByteArray(2, '\0');
    OutputFormat noBlocks = longBlocks;
    noBlocks.waveFormat = {};
    const std::vector<EncoderCase> refused = {
        {"12 bits", MakePcmEncoder, FormatFor(FormatKind::Pcm, 44100, 2, 12)},
        {"six channels", MakePcmEncoder, FormatFor(FormatKind::Pcm, 44100, 6, 16)},
        {"no channel", MakePcmEncoder, FormatFor(FormatKind::Pcm, 44100, 0, 16)},
        {"no rate", MakePcmEncoder, FormatFor(FormatKind::Pcm, 0, 2, 16)},
        {"an unknown law", MakePcmEncoder, RawFormat(9, 44100, 2, 16)},
        {"a rate beyond the header", MakePcmEncoder, FormatFor(FormatKind::Pcm, 2000000000, 2, 32)},
        {"three channels of ADPCM", MakeAdpcmEncoder, FormatFor(FormatKind::ImaAdpcm, 44100, 3, 4)},
        {"ADPCM without a rate", MakeAdpcmEncoder, FormatFor(FormatKind::ImaAdpcm, 0, 1, 4)},
        {"blocks that are too long", MakeAdpcmEncoder, longBlocks},
        {"no block size", MakeAdpcmEncoder, noBlocks},
        {"stereo GSM", MakeGsmEncoder, FormatFor(FormatKind::Gsm, 44100, 2, 0)},
        {"GSM without a rate", MakeGsmEncoder, FormatFor(FormatKind::Gsm, 0, 1, 0)},
        {"stereo VOX", MakeVoxEncoder, FormatFor(FormatKind::Vox, 44100, 2, 4)},
        {"stereo G.721", MakeG72xEncoder, FormatFor(FormatKind::G721, 8000, 2, 4)},
        {"G.723 of 4 bits", MakeG72xEncoder, FormatFor(FormatKind::G723, 8000, 1, 4)},
        {"G.726 of 6 bits", MakeG72xEncoder, FormatFor(FormatKind::G726, 8000, 1, 6)},
        {"G.726 without a rate", MakeG72xEncoder, FormatFor(FormatKind::G726, 0, 1, 4)}};
    for (const EncoderCase& encoder : refused) {
        SCOPED_TRACE(encoder.name);
        QBuffer out;
        ASSERT_TRUE(out.open(QIODevice::ReadWrite));
        const auto made = encoder.make(encoder.format);
        EXPECT_EQ(made->Begin(out), Outcome::NotSupported);
        EXPECT_TRUE(out.data().isEmpty());
    }
}

TEST(EncoderFaults, CallsBeforeBeginAreRefused) {
    constexpr qint16 sample = 0;
    for (const EncoderCase& encoder : SimpleEncoders()) {
        SCOPED_TRACE(encoder.name);
        const auto made = encoder.make(encoder.format);
        EXPECT_NE(made->WriteIntegers(&sample, 0), Outcome::Ok);
        EXPECT_EQ(made->Finish(), Outcome::NotOpen);
    }
}

TEST(EncoderFaults, AWaveFileEndsBeforeItsSizesDo) {
    constexpr qint64 pieceBytes = 64 << 20;
    const QByteArray piece(pieceBytes, '\0');
    SwallowingDevice out(Q_INT64_C(1) << 40);
    WaveWriter writer(PlainWaveFormat(WaveTagPcm, 2, 44100, 16));
    ASSERT_EQ(writer.Begin(out), Outcome::Ok);
    int pieces = 0;
    while (pieces < 64 && writer.Write(piece.constData(), pieceBytes) == Outcome::Ok) {
        ++pieces;
    }
    EXPECT_EQ(pieces, 63);
    const qint64 left = 0xFFFFFFFE - 44 - 1 - pieces * pieceBytes;
    EXPECT_EQ(writer.Write(piece.constData(), left + 1), Outcome::WriteFailed);
    EXPECT_EQ(writer.Write(piece.constData(), left), Outcome::Ok);
    EXPECT_EQ(writer.Finish((pieces * pieceBytes + left) / 4), Outcome::Ok);
    EXPECT_LT(out.size(), Q_INT64_C(1) << 32);
}

} // namespace kestrune
