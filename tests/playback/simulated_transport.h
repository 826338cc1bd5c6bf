// A transport that really plays: files in memory, heard through the simulated player.
#pragma once

#include "support/simulated_player.h"
#include "support/test_program.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

namespace kestrune {

class SimulatedComponents : public FakeComponents {
public:
    SimulatedPlayer* player = nullptr;

    std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() override {
        auto made = std::make_unique<SimulatedPlayer>();
        player = made.get();
        return made;
    }
};

class SimulatedTransport : public testing::Test {
protected:
    SimulatedTransport() {
        state.AppPath = folder.path();
        // Nobody looks at a display here, and to feed one takes most of the time.
        QObject::disconnect(&player, nullptr, &house.program.feed, nullptr);
        QObject::connect(&transport, &Transport::LampShown, &transport, [this](Lamp shown) { lamp = shown; });
        QObject::connect(&transport, &Transport::PauseCaption, &transport,
                         [this](const QString& shown) { caption = shown; });
    }

    // A file of noise, so that a sample lost or played twice shows.
    void AddNoise(qint64 frames, int rateHz, int channels) {
        const QString name = QStringLiteral("%1.wav").arg(rows.Count() + 1);
        QFile onDisk(folder.filePath(name));
        ASSERT_TRUE(onDisk.open(QIODevice::WriteOnly));
        FakeAudioFile::Content content;
        content.rateHz = rateHz;
        content.channels = channels;
        content.pcm.resize(frames * frameBytes(channels));
        for (char& byte : content.pcm) {
            byte = static_cast<char>(noise());
        }
        contents.append(content.pcm);
        file.files.insert(folder.filePath(name), content);
        PlaylistRow row;
        row.fields[RowText] = QStringLiteral("%1. noise").arg(rows.Count() + 1);
        row.fields[SubFolder] = folder.path() + u'/';
        row.fields[SubFileName] = name;
        rows.Append(row);
    }

    // Samples of a row, 1-based.
    const QByteArray& Content(int row) const { return contents[row - 1]; }

    std::mt19937 noise{41017};
    QTemporaryDir folder;
    TestProgram<SimulatedComponents> house;
    ProgramState& state = house.state;
    Options& options = house.program.options;
    PlaylistRows& rows = house.program.rows;
    FakeAudioFile& file = *house.components.files.first();
    SimulatedPlayer& player = *house.components.player;
    Transport& transport = house.program.transport;
    PlayButtons& buttons = house.program.buttons;
    QList<QByteArray> contents;
    Lamp lamp = Lamp::Stopped;
    QString caption = QStringLiteral("Pause");
};

} // namespace kestrune
