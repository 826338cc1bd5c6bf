// What the main window takes of the program.
#pragma once

#include "main_window/frm_main.h"
#include "program/program.h"

namespace kestrune {

inline FrmMainParts MainWindowParts(Program& program, const MainPictures& pictures) {
    return {pictures,      program.state,   program.options,   program.rows,        program.admission,
            program.files, program.editing, program.transport, program.buttons,     program.routing,
            program.knob,  program.listTip, program.display,   *program.audioPlayer};
}

} // namespace kestrune
