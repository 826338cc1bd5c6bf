// Opens the tag editor.
#pragma once

#include "app/program_state.h"
#include "components/audio_information.h"
#include "components/user_prompts.h"
#include "playlist/playlist_rows.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace kestrune {

// All references must outlive the opener.
struct TagEditorOpenerParts {
    const ProgramState& state;
    PlaylistRows& rows;
    UserPrompts& prompts;
    std::function<std::unique_ptr<KSTAudioInformation2>()> makeAudioInformation;
};

// Window thread.
class TagEditorOpener {
public:
    explicit TagEditorOpener(TagEditorOpenerParts parts) : parts_(std::move(parts)) {}

    // The editor for the current row, with a tag object of its own. Returns when it was closed. The playlist
    // is not empty. `owner`, which may be null, gives the window its icon and is painted anew afterwards.
    void Show(QWidget* owner) const;

private:
    TagEditorOpenerParts parts_;
};

} // namespace kestrune
