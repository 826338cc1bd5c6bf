#include "program/tag_editor_opener.h"

#include "editors/frm_info.h"
#include "skin/program_icon.h"

namespace kestrune {

void TagEditorOpener::Show(QWidget* owner) const {
    const auto information = parts_.makeAudioInformation();
    FrmInfo window({parts_.state, parts_.rows, *information, parts_.prompts}, owner);
    window.setWindowIcon(owner != nullptr ? owner->windowIcon() : ProgramIcon());
    window.setWindowModality(Qt::ApplicationModal);
    window.Load();
    window.exec();
    if (owner != nullptr) {
        owner->update();
    }
}

} // namespace kestrune
