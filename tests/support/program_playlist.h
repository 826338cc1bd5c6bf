// The playlist of a program over fakes, with folders of its own.
#pragma once

#include "support/rule_support.h"
#include "support/test_program.h"

namespace kestrune::rules {

// `home` is the program's folder, `music` holds the user's files.
class Playlist {
public:
    Folder home;
    Folder music;
    TestProgram<> house;

    // The parts that tests look at.
    ProgramState& state = house.state;
    Options& options = house.program.options;
    PlaylistRows& rows = house.program.rows;
    FakeAudioInformation& probe = *house.components.information.first();
    FakeUserPrompts& prompts = house.components.prompts;
    Admission& admission = house.program.admission;
    PlaylistFiles& files = house.program.files;

    Playlist() { state.AppPath = home.Path(); }

    QString MusicFolder() const { return music.Path() + u'/'; }
    QString DefaultFile() const { return home.Path(QStringLiteral("Default.ksl")); }

    // A file that the prober knows as one minute with the title.
    QString AddMusic(const QString& name, const QString& title = {}) {
        const QString path = music.Write(name, "x");
        FakeAudioInformation::Probe facts;
        facts.bitrateBps = 128 * 1024;
        facts.durationMs = 60000;
        facts.formatString = QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
        facts.title = title;
        probe.files.insert(path, facts);
        return path;
    }
};

} // namespace kestrune::rules
