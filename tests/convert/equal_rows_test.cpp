// What a run leaves behind for the rows that follow, and for the next run.
#include "convert/converted_folder.h"

#include <malloc.h>

namespace kestrune {

namespace {

class EqualRows : public ConvertedFolder {
protected:
    // A second of sound at 8,000 Hz, which is what such a file is read at unless something else was set.
    void AddCoded(const QString& name) {
        CodecFile writer;
        EXPECT_EQ(writer.SetFormatG721(8000), Outcome::Ok);
        Add(name, writer, ToneInNoise(8000, 1, 3), 8000, 1);
    }
};

qint64 BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

} // namespace

TEST_F(EqualRows, GiveEqualFilesInARun) {
    AddCoded(QStringLiteral("one.g721"));
    AddCoded(QStringLiteral("two.g721"));
    Tick(OutputBox::chG721);
    Tick(OutputBox::chULAW);
    Start();
    EXPECT_FALSE(Output(QStringLiteral("one.g721")).isEmpty());
    EXPECT_TRUE(Output(QStringLiteral("one.g721")) == Output(QStringLiteral("two.g721")));
    EXPECT_TRUE(Output(QStringLiteral("one_ULAW.raw")) == Output(QStringLiteral("two_ULAW.raw")));
    // A second of sound at 8,000 Hz is one at 44,100 Hz in stereo, behind the stage that sets its rate too.
    constexpr qint64 second = 2 * 44100;
    EXPECT_NEAR(static_cast<double>(Output(QStringLiteral("one_ULAW.raw")).size()), second, 1000);
}

// So that what a run wrote is read as it was written.
TEST_F(EqualRows, AreReadInTheNextRunAsTheLastOneWroteThem) {
    AddCoded(QStringLiteral("one.g721"));
    Tick(OutputBox::chG721);
    Start();
    const QByteArray first = Output(QStringLiteral("one.g721"));
    EXPECT_NEAR(static_cast<double>(first.size()), 44100.0 / 2, 500);
    Start();
    // All 8,000 samples as they are.
    EXPECT_EQ(Output(QStringLiteral("one.g721")).size(), 4000);
    Tick(OutputBox::chG721, false);
    Tick(OutputBox::chULAW);
    Start();
    EXPECT_NEAR(static_cast<double>(Output(QStringLiteral("one_ULAW.raw")).size()), 2 * 8000, 100);
}

TEST_F(EqualRows, SamplesAreLetGoAtTheEnd) {
    constexpr int seconds = 60;
    const QByteArray samples = ToneInNoise(44100 * seconds, 2, 4);
    AddWave(QStringLiteral("a.wav"), samples, 44100);
    Tick(OutputBox::chADPCM);
    Tick(OutputBox::chULAW);
    qint64 atWork = 0;
    events_.onRun = [&] { atWork = std::max(atWork, BytesInUse()); };
    const qint64 before = BytesInUse();
    Start();
    EXPECT_GT(atWork - before, samples.size() / 2) << "kept while they are read again";
    EXPECT_LT(BytesInUse() - before, samples.size() / 10);
}

} // namespace kestrune
