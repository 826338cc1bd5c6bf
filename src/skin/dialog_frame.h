// Makes any dialog one of the skin: message boxes, file dialogs, the program's own.
#pragma once

class QApplication;
class QDialog;

namespace kestrune {

// Gives a dialog that has not been shown yet the graphite body with a title bar of its own (LabelTitle,
// ImageQuit), instead of the frame of the desktop. Its contents move down by the bar. It can be dragged by
// the title, and resized by its edges if its size is not fixed; Escape and its buttons work as before. A file
// dialog gets the skin's icons. A second call does nothing. Window thread.
void FrameDialog(QDialog& dialog);

// Does so to every dialog that is about to be shown, those that a library makes inside too, other than
// dialogs without a frame. Call once.
void FrameAllDialogs(QApplication& application);

} // namespace kestrune
