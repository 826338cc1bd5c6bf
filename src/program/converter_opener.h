// Opens the converter window.
#pragma once

#include "app/program_state.h"
#include "components/audio_file.h"
#include "components/clock.h"
#include "components/pending_events.h"
#include "components/user_prompts.h"
#include "playlist/playlist_rows.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace kestrune {

// All references must outlive the opener.
struct ConverterOpenerParts {
    ProgramState& state;
    const PlaylistRows& rows;
    UserPrompts& prompts;
    PendingEvents& pending;
    Clock& clock;
    std::function<std::unique_ptr<KSTAudioFile2>()> makeAudioFile;
};

// Window thread.
class ConverterOpener {
public:
    explicit ConverterOpener(ConverterOpenerParts parts) : parts_(std::move(parts)) {}

    // Each opening has files, rules and a window of its own, which go when it is closed. Returns then.
    // `owner`, which may be null, gives the window its icon.
    void Show(QWidget* owner) const;

private:
    ConverterOpenerParts parts_;
};

} // namespace kestrune
