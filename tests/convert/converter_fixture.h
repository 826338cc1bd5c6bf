// The rules of the converter as the program opens them, over fakes, with folders of their own.
#pragma once

#include "program/converter_tool.h"
#include "support/fake_components.h"
#include "support/rule_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kestrune::convert {

using rules::Folder;
using rules::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

inline Texts ToTexts(const QStringList& list) {
    Texts texts;
    for (const QString& text : list) {
        texts.push_back(Utf8(text));
    }
    return texts;
}

class ConverterTest : public testing::Test {
protected:
    // A block is two channels times this rate: 200 bytes.
    static constexpr int rateHz = 100;
    static constexpr int blockBytes = 200;

    ConverterTest() {
        program.AppPath = home.Path();
        // Each line of the log stands in the calls of both files as well, so that tests see what came first.
        QObject::connect(&converter.Events, &EventLog::RowShown, [this](int line) {
            const QString& text = converter.Events.Text(line);
            if (!text.isEmpty()) {
                input.calls << u'#' + text;
                output.calls << u'#' + text;
            }
        });
    }

    QString ConPath() const { return home.Path(QStringLiteral("ConPath.dat")); }

    // A file in the folder of the music that can be decoded to so many bytes.
    QString AddMusic(const QString& name, int pcmBytes = 500) {
        const QString path = music.Write(name, "x");
        AddContent(path, pcmBytes);
        return path;
    }
    void AddContent(const QString& path, int pcmBytes) {
        FakeAudioFile::Content content;
        content.rateHz = rateHz;
        for (int i = 0; i < pcmBytes; ++i) {
            content.pcm.append(static_cast<char>(i % 100));
        }
        input.files.insert(path, content);
    }
    // The same as a checked row of the list.
    QString AddJob(const QString& name, int pcmBytes = 500) {
        const QString path = AddMusic(name, pcmBytes);
        converter.Rows.Append({{name, {}, music.Path(), true}});
        return path;
    }
    void Tick(OutputBox box) { converter.Settings.OutputBox_Click(static_cast<int>(box), true); }
    // As the window opens it, with the output folder set, and with what the load did forgotten.
    void Open() {
        converter.Load();
        converter.Jobs.TextOutPath_Change(out.Path());
        Forget();
    }
    void Forget() {
        input.calls.clear();
        output.calls.clear();
        firstLine = converter.Events.Count() + 1;
    }
    void Start() { converter.Run.Image1_Click(); }
    void Stop() { converter.Run.Image2_Click(); }

    // Lines of the log since Forget.
    Texts Log() const {
        Texts texts;
        for (int line = firstLine; line <= converter.Events.Count(); ++line) {
            texts.push_back(Utf8(converter.Events.Text(line)));
        }
        return texts;
    }
    Texts Messages() const { return Shown(prompts.messages); }
    Texts Questions() const { return Shown(prompts.questions); }
    static Texts Shown(const QList<FakeUserPrompts::Shown>& shown) {
        Texts texts;
        for (const auto& box : shown) {
            texts.push_back(Utf8(box.text));
        }
        return texts;
    }
    Texts Names() const {
        Texts texts;
        for (int row = 1; row <= converter.Rows.Count(); ++row) {
            texts.push_back(Utf8(converter.Rows.Row(row).name));
        }
        return texts;
    }
    // Names of the outputs that were created, in their order.
    Texts Created() const {
        Texts texts;
        for (const QString& call : output.calls) {
            if (call.startsWith(QStringLiteral("Create "))) {
                texts.push_back(Utf8(call.mid(7 + out.Path().size() + 1)));
            }
        }
        return texts;
    }
    std::string Status() const { return Utf8(converter.Run.Label10(1)); }

    Folder home;
    Folder music;
    Folder out;
    ProgramState program;
    PlaylistRows playlist;
    FakeComponents components;
    ConverterTool tool{components, program, playlist};

    // The parts that tests look at.
    FakeAudioFile& output = *components.files[0];
    FakeAudioFile& input = *components.files[1];
    FakeUserPrompts& prompts = components.prompts;
    FakePendingEvents& pending = components.events;
    FakeClock& clock = components.clock;
    ConverterRules& converter = tool.rules;
    int firstLine = 1;
};

} // namespace kestrune::convert
