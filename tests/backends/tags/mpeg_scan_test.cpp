#include "backends/formats/mpeg_scan.h"
#include "backends/tags/bounded_file.h"

#include "backends/tags/made_files.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

// Layer 1, 44100 Hz, 128 kbit/s, stereo: 136 bytes, or 140 with padding; here without.
QByteArray LayerOneFrame() {
    return QByteArray::fromHex("FFFF4000") + QByteArray(132, '\0');
}

// Layer 3, 44100 Hz, 128 kbit/s, stereo: 417 bytes.
QByteArray LayerThreeFrame() {
    return QByteArray::fromHex("FFFB9000") + QByteArray(413, '\0');
}

std::optional<MpegFrame> ScanOf(const QByteArray& bytes, qint64 start = 0) {
    const MadeFiles made;
    BoundedFile file(made.Write(QStringLiteral("scan"), bytes));
    return file.Open() == Outcome::Ok ? FindMpegFrame(file, start) : std::nullopt;
}

TEST(MpegHeader, TellsLayerRateAndSize) {
    const auto three = ParseMpegHeader(QByteArray::fromHex("FFFB9000"));
    ASSERT_TRUE(three);
    EXPECT_EQ(three->layer, 3);
    EXPECT_EQ(three->rateHz, 44100);
    EXPECT_EQ(three->channels, 2);
    EXPECT_EQ(three->bitrateBps, 128000);
    EXPECT_EQ(three->frameBytes, 417);
    EXPECT_EQ(three->samples, 1152);

    const auto half = ParseMpegHeader(QByteArray::fromHex("FFF380C0"));
    ASSERT_TRUE(half);
    EXPECT_EQ(half->rateHz, 22050);
    EXPECT_EQ(half->channels, 1);
    EXPECT_EQ(half->bitrateBps, 64000);
    EXPECT_EQ(half->frameBytes, 208);
    EXPECT_EQ(half->samples, 576);

    const auto one = ParseMpegHeader(QByteArray::fromHex("FFFF4000"));
    ASSERT_TRUE(one);
    EXPECT_EQ(one->layer, 1);
    EXPECT_EQ(one->bitrateBps, 128000);
    EXPECT_EQ(one->frameBytes, 136);
    EXPECT_EQ(one->samples, 384);
}

TEST(MpegHeader, RefusesReservedValues) {
    for (const char* hex :
         {"FFEB9000", "FFF99000", "FFFBF000", "FFFB0000", "FFFB9C00", "FFFB9002", "FEFB9000", "FFFB"}) {
        EXPECT_FALSE(ParseMpegHeader(QByteArray::fromHex(hex))) << hex;
    }
}

TEST(MpegScan, TakesAChainAtTheStart) {
    const auto found = ScanOf(LayerThreeFrame().repeated(3));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, 0);
}

TEST(MpegScan, TakesAChainBehindZeroBytes) {
    const auto found = ScanOf(QByteArray(3000, '\0') + LayerThreeFrame().repeated(3));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, 3000);
}

TEST(MpegScan, TakesAShortFileThatEndsWithItsChain) {
    EXPECT_TRUE(ScanOf(LayerThreeFrame()));
    EXPECT_TRUE(ScanOf(LayerThreeFrame() + "TAG" + QByteArray(125, ' ')));
    EXPECT_FALSE(ScanOf(LayerThreeFrame().left(300)));
}

TEST(MpegScan, WantsALongChainBehindOtherBytes) {
    const QByteArray other = QByteArray("other bytes, ").repeated(40);
    EXPECT_FALSE(ScanOf(other + LayerOneFrame().repeated(8) + other));
    const auto found = ScanOf(other + LayerOneFrame().repeated(12) + other);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, other.size());
}

TEST(MpegScan, DoesNotMixStreams) {
    EXPECT_FALSE(ScanOf(LayerThreeFrame() + LayerOneFrame() + LayerThreeFrame()));
}

TEST(BoundedFile, GivesNothingBeyondItsBudget) {
    const MadeFiles made;
    const QString path = made.Path(QStringLiteral("large"));
    QFile sparse(path);
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly) && sparse.resize(1LL << 30));
    BoundedFile file(path);
    ASSERT_EQ(file.Open(), Outcome::Ok);
    qint64 totalBytes = 0;
    for (qint64 got = -1; got != 0; totalBytes += got) {
        got = file.Read(1 << 20).size();
    }
    EXPECT_GT(totalBytes, 1 << 20);
    EXPECT_LT(totalBytes, 64 << 20);
    file.RenewBudget();
    EXPECT_EQ(file.ReadAt(0, 10).size(), 10);
}

TEST(BoundedFile, ReadsBehindTheEndCostToo) {
    const MadeFiles made;
    BoundedFile file(made.Write(QStringLiteral("short"), "0123456789"));
    ASSERT_EQ(file.Open(), Outcome::Ok);
    file.SetBudget(1000000);
    for (int reads = 0; reads < 1000; ++reads) {
        EXPECT_TRUE(file.ReadAt(10, 1).isEmpty());
    }
    EXPECT_EQ(file.ReadAt(0, 10).size(), 10);
    for (int reads = 0; reads < 100000; ++reads) {
        file.ReadAt(10, 1);
    }
    EXPECT_TRUE(file.ReadAt(0, 10).isEmpty());
}

TEST(BoundedFile, TinyReadsCostToo) {
    const MadeFiles made;
    const QString path = made.Path(QStringLiteral("large"));
    QFile sparse(path);
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly) && sparse.resize(1LL << 30));
    BoundedFile file(path);
    ASSERT_EQ(file.Open(), Outcome::Ok);
    int reads = 0;
    while (!file.Read(1).isEmpty() && reads < 10000000) {
        ++reads;
    }
    EXPECT_LT(reads, 1000000);
}

TEST(MpegScan, TakesTwoFramesBeforeAPieceOfAHeader) {
    const QByteArray two = LayerThreeFrame().repeated(2);
    for (const QByteArray& rest : {QByteArray(), QByteArray(1, '\xFF'), QByteArray(3, '\0')}) {
        EXPECT_TRUE(ScanOf(two + rest)) << rest.size();
    }
    EXPECT_FALSE(ScanOf(two + QByteArray(4, '\0')));
    EXPECT_FALSE(ScanOf(LayerThreeFrame() + QByteArray(1, '\0')));
}

} // namespace

} // namespace kestrune
