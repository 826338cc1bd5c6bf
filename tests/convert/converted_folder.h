// The rules of the converter over real files, in folders of their own.
#pragma once

#include "backends/audio_file/codec_file.h"
#include "program/converter_tool.h"
#include "support/fake_components.h"
#include "support/rule_support.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace kestrune {

// Events that tell how long they had to wait.
class TimedEvents : public PendingEvents {
public:
    std::function<void()> onRun;

    void Begin() {
        longestMs_ = 0;
        runs_ = 0;
        clock_.start();
    }
    void Run() override {
        ++runs_;
        if (const double ms = SinceLastMs(); ms > longestMs_) {
            longestMs_ = ms;
            longestAt_ = runs_;
        }
        if (onRun) {
            onRun();
        }
        clock_.start();
    }
    bool RunFor(int /*ms*/) override {
        Run();
        return true;
    }
    double SinceLastMs() const { return static_cast<double>(clock_.nsecsElapsed()) / 1e6; }
    // With the time since the last ones.
    double LongestMs() const { return std::max(longestMs_, SinceLastMs()); }
    // Before which of them that was, counted from 1.
    int LongestAt() const { return longestMs_ >= SinceLastMs() ? longestAt_ : runs_ + 1; }

private:
    QElapsedTimer clock_;
    double longestMs_ = 0;
    int longestAt_ = 0;
    int runs_ = 0;
};

// Reads and writes files as on a machine.
class CodecComponents : public FakeComponents {
public:
    QList<CodecFile*> codecFiles;
    TimedEvents timedEvents;

    std::unique_ptr<KSTAudioFile2> MakeAudioFile() override {
        return Noted(codecFiles, std::make_unique<CodecFile>());
    }
    PendingEvents& Events() override { return timedEvents; }
};

// A tone in noise of a seed, interleaved.
inline QByteArray ToneInNoise(int frames, int channels, quint32 seed) {
    QByteArray bytes(qsizetype{frames} * channels * 2, Qt::Uninitialized);
    auto* sample = reinterpret_cast<qint16*>(bytes.data());
    std::minstd_rand random(seed);
    for (int frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < channels; ++channel) {
            const double tone = 8000 * std::sin(frame * 0.05 * (channel + 1));
            *sample++ = static_cast<qint16>(tone + static_cast<double>(random() % 4001) - 2000);
        }
    }
    return bytes;
}

class ConvertedFolder : public testing::Test {
protected:
    ConvertedFolder() {
        program_.AppPath = folder_.Path();
        QDir(folder_.Path()).mkdir(QStringLiteral("out"));
        converter_.Load();
        converter_.Jobs.TextOutPath_Change(folder_.Path(QStringLiteral("out")));
        prompts_.answers << false;
    }

    // A row of the list, of samples in the format that `writer` is set to.
    void Add(const QString& name, CodecFile& writer, const QByteArray& samples, int rateHz, int channels) {
        EXPECT_EQ(writer.Create(folder_.Path(name)), Outcome::Ok);
        writer.SetSourceFormat(rateHz, channels);
        EXPECT_EQ(writer.WriteBlock(samples), Outcome::Ok);
        EXPECT_EQ(writer.CloseFile(), Outcome::Ok);
        converter_.Rows.Append({{name, {}, folder_.Path(), true}});
    }
    void AddWave(const QString& name, const QByteArray& samples, int rateHz) {
        CodecFile writer;
        EXPECT_EQ(writer.SetFormatPCMFreq(rateHz, 2, 16), Outcome::Ok);
        Add(name, writer, samples, rateHz, 2);
    }
    void Tick(OutputBox box, bool on = true) {
        converter_.Settings.OutputBox_Click(static_cast<int>(box), on);
    }
    void Start() {
        events_.Begin();
        converter_.Run.Image1_Click();
    }
    QString Path(const QString& name) const { return folder_.Path(QStringLiteral("out/") + name); }
    QByteArray Output(const QString& name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    rules::Folder folder_;
    ProgramState program_;
    PlaylistRows playlist_;
    CodecComponents components_;
    ConverterTool tool_{components_, program_, playlist_};
    CodecFile& output_ = *components_.codecFiles[0];
    FakeUserPrompts& prompts_ = components_.prompts;
    TimedEvents& events_ = components_.timedEvents;
    ConverterRules& converter_ = tool_.rules;
};

} // namespace kestrune
