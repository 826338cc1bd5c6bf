// A transport that really plays: files in memory, heard through the simulated player.
#pragma once

#include "playback/play_buttons.h"
#include "playback/transport.h"
#include "support/fake_audio_file.h"
#include "support/fake_clock.h"
#include "support/fake_recording.h"
#include "support/fake_user_prompts.h"
#include "support/simulated_player.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

namespace kestrune {

class SimulatedTransport : public testing::Test {
protected:
    SimulatedTransport() {
        state.AppPath = folder.path();
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
    ProgramState state;
    Options options{state};
    PlaylistRows rows;
    FakeAudioFile file;
    SimulatedPlayer player;
    FakeUserPrompts prompts;
    FakeClock clock;
    Transport transport{{state, rows, options, file, player, prompts, clock}};
    FakeRecording recording;
    PlayButtons buttons{{state, rows, options, clock, transport, recording}};
    QList<QByteArray> contents;
    Lamp lamp = Lamp::Stopped;
    QString caption = QStringLiteral("Pause");
};

} // namespace kestrune
