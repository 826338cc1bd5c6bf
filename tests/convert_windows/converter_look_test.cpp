// What the converter window looks like in each of its states. With KESTRUNE_PICTURES set to a folder the
// pictures are kept there.
#include "converter_window_fixture.h"

#include <QPainter>

namespace kestrune {
namespace {

class ConverterLookTest : public ConverterWindowTest {
protected:
    void Keep(const QString& name) {
        const QString folder = qEnvironmentVariable("KESTRUNE_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(window.grab().save(QStringLiteral("%1/%2.png").arg(folder, name)));
        }
    }
    void Fill() {
        for (const char* name : {"Harbour steps.wav", "First light.mp3", "Paper lanterns.ogg",
                                 "A very long name of a piece that nobody would ever want to read.wma",
                                 "Music box.mp2", "Night signal.mpc", "Slow tide.wav"}) {
            MakeFile(QLatin1String(name), 40000);
        }
        program.ConvertMode = 0;
        Open();
        rules.Jobs.txtInputFile_Change(music.path());
        rules.Jobs.TextOutPath_Change(results.path());
        rules.Jobs.ImageAllClear_Click(0);
    }
};

TEST_F(ConverterLookTest, Pictures) {
    Fill();
    Keep(QStringLiteral("short"));
    Click("chMP3");
    Click("chOGG");
    Click("ImageUpdown");
    Keep(QStringLiteral("long"));
    Click("ImageOptions");
    Keep(QStringLiteral("panel"));
    Click("ImageSetdown");
    int blocks = 0;
    pending.onRun = [this, &blocks] {
        if (++blocks == 12) {
            QCoreApplication::processEvents();
            Keep(QStringLiteral("running"));
        }
    };
    Click("Image1");
    EXPECT_GE(blocks, 12);
    Keep(QStringLiteral("done"));
}

} // namespace
} // namespace kestrune
