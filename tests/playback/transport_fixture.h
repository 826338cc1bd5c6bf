// The transport of a program over fakes, with one record of everything that it does, in order.
#pragma once

#include "support/test_program.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {

class LoggedAudioPlayer : public FakeAudioPlayer {
public:
    explicit LoggedAudioPlayer(QStringList& log) : log_(log) {}

    void SetFormat(qint32 newWaveFormat, qint32 newChannels) override {
        FakeAudioPlayer::SetFormat(newWaveFormat, newChannels);
        log_.append(calls.last());
    }
    Outcome Prepare() override {
        const Outcome outcome = FakeAudioPlayer::Prepare();
        log_.append(calls.last());
        return outcome;
    }
    Outcome WriteBlock(const QByteArray& block) override {
        const Outcome outcome = FakeAudioPlayer::WriteBlock(block);
        log_.append(calls.last());
        return outcome;
    }
    void ClearBlocks() override {
        FakeAudioPlayer::ClearBlocks();
        log_.append(calls.last());
    }
    void StopOutput() override {
        FakeAudioPlayer::StopOutput();
        log_.append(calls.last());
    }

private:
    QStringList& log_;
};

class LoggedAudioFile : public FakeAudioFile {
public:
    explicit LoggedAudioFile(QStringList& log) : log_(log) {}

    Outcome OpenRead(const QString& file, qint32 first = 0, qint32 second = 1) override {
        const Outcome outcome = FakeAudioFile::OpenRead(file, first, second);
        log_.append(QStringLiteral("OpenRead %1 %2 %3").arg(file.section(u'/', -1)).arg(first).arg(second));
        return outcome;
    }
    Outcome CloseFile() override {
        const Outcome outcome = FakeAudioFile::CloseFile();
        log_.append(calls.last());
        return outcome;
    }
    QByteArray ReadBlock(qint64 size) override {
        const QByteArray block = FakeAudioFile::ReadBlock(size);
        log_.append(calls.last());
        return block;
    }
    qint64 SeekTo(qint64 position, qint32 whence = 3) override {
        const qint64 place = FakeAudioFile::SeekTo(position, whence);
        log_.append(QStringLiteral("SeekTo %1 %2").arg(position).arg(whence));
        return place;
    }

private:
    QStringList& log_;
};

// Writes what player and files are told into one log.
class LoggedComponents : public FakeComponents {
public:
    QStringList log;

    std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() override {
        return Noted(players, std::make_unique<LoggedAudioPlayer>(log));
    }
    std::unique_ptr<KSTAudioFile2> MakeAudioFile() override {
        return Noted(files, std::make_unique<LoggedAudioFile>(log));
    }
};

// Tracks are mono at 1000 Hz unless a test says otherwise: two bytes to a millisecond, 4000 to a block.
class TransportFixture : public testing::Test {
protected:
    static constexpr int trackRateHz = 1000;

    TransportFixture() {
        state.AppPath = folder.path();
        Listen();
    }

    // A file on disk, its samples and its row. Returns the row's number.
    int AddTrack(const QString& name, int lengthMs = 10000, int rateHz = trackRateHz, int channels = 1) {
        QFile onDisk(PathOf(name));
        EXPECT_TRUE(onDisk.open(QIODevice::WriteOnly));
        FakeAudioFile::Content content;
        content.rateHz = rateHz;
        content.channels = channels;
        content.formatText = QStringLiteral("PCM, 1,000 Hz, 16 KBPS, Mono");
        const qint64 bytes = pcmBytesForMs(lengthMs, rateHz, channels);
        for (qint64 i = 0; i < bytes; ++i) {
            content.pcm.append(static_cast<char>((i + rows.Count()) % 251));
        }
        file.files.insert(PathOf(name), content);
        return AddRow(name);
    }
    int AddRow(const QString& name) {
        PlaylistRow row;
        row.fields[RowText] = QStringLiteral("%1. %2").arg(rows.Count() + 1).arg(name);
        row.fields[SubFolder] = folder.path() + u'/';
        row.fields[SubFileName] = name;
        return rows.Append(row);
    }
    // a.wav, b.wav, ... in rows 1, 2, ...
    void AddTracks(int count) {
        for (int i = 0; i < count; ++i) {
            AddTrack(QString(QChar(u'a' + i)) + QStringLiteral(".wav"));
        }
    }
    void Play(int row) {
        state.CurIndex = row;
        transport.PlayCurrentItem();
        ASSERT_TRUE(transport.State().IsPlaying);
        ASSERT_EQ(state.LastIndex, row);
        log.clear();
    }
    void Select(std::initializer_list<int> selected) {
        rows.SelectOnly(0, 0);
        for (const int row : selected) {
            rows.SetSelected(row, true);
        }
    }
    QList<int> Selected() const {
        QList<int> selected;
        for (int row = 1; row <= rows.Count(); ++row) {
            if (rows.IsSelected(row)) {
                selected.append(row);
            }
        }
        return selected;
    }
    QList<int> Bold() const {
        QList<int> bold;
        for (int row = 1; row <= rows.Count(); ++row) {
            if (rows.IsBold(row)) {
                bold.append(row);
            }
        }
        return bold;
    }
    QList<bool> Buttons() const {
        QList<bool> enabled;
        for (int i = 0; i < transportButtonCount; ++i) {
            enabled.append(transport.IsButtonEnabled(i));
        }
        return enabled;
    }
    QString PathOf(const QString& name) const { return folder.filePath(name); }
    QString Playing() const { return transport.State().PlayFile.section(u'/', -1); }
    // The log without the single buttons.
    QStringList Steps() const {
        QStringList steps;
        for (const QString& entry : log) {
            if (!entry.startsWith(QLatin1String("Button "))) {
                steps.append(entry);
            }
        }
        return steps;
    }
    void CheckMode(PlayMode mode) { options.ImageRepeatModeBut_Click(static_cast<int>(mode)); }

    QTemporaryDir folder;
    TestProgram<LoggedComponents> house;

    // The parts of the program that tests look at.
    QStringList& log = house.components.log;
    ProgramState& state = house.state;
    Options& options = house.program.options;
    PlaylistRows& rows = house.program.rows;
    FakeAudioFile& file = *house.components.files.first();
    FakeAudioPlayer& player = *house.components.players.first();
    FakeUserPrompts& prompts = house.components.prompts;
    FakeClock& clock = house.components.clock;
    Transport& transport = house.program.transport;
    PlayButtons& buttons = house.program.buttons;
    QString pauseCaption = QStringLiteral("Pause");
    int lamp = 0;

private:
    template <typename... Values>
    void Note(const QString& name, Values... values) {
        QString entry = name;
        ((entry += QStringLiteral(" %1").arg(values)), ...);
        log.append(entry);
    }
    void Listen() {
        const auto note = [this](auto signal, const char* name) {
            QObject::connect(&transport, signal, &transport, [this, name](auto... values) {
                this->Note(QString::fromLatin1(name), values...);
            });
        };
        note(&Transport::NameShown, "Name");
        note(&Transport::ButtonEnabled, "Button");
        note(&Transport::PauseCaption, "Caption");
        note(&Transport::PlayPressed, "PlayPressed");
        note(&Transport::PausePressed, "PausePressed");
        note(&Transport::ButtonsReturned, "ButtonsReturned");
        note(&Transport::ChangeColorEnabled, "ChangeColor");
        note(&Transport::ThumbVisible, "Thumb");
        note(&Transport::PositionReset, "PositionReset");
        note(&Transport::ClockCleared, "ClockCleared");
        note(&Transport::KhzShown, "Khz");
        note(&Transport::DisplayCleared, "DisplayCleared");
        note(&Transport::RowShown, "Row");
        note(&Transport::TimeShown, "Time");
        note(&Transport::Sought, "Sought");
        note(&Transport::RowsChanged, "RowsChanged");
        QObject::connect(&transport, &Transport::LampShown, &transport, [this](Lamp shown) {
            lamp = static_cast<int>(shown);
            Note(QStringLiteral("Lamp"), lamp);
        });
        QObject::connect(&transport, &Transport::PauseCaption, &transport,
                         [this](const QString& caption) { pauseCaption = caption; });
    }
};

} // namespace kestrune
