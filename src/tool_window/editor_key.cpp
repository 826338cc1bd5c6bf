#include "tool_window/editor_key.h"

#include <QPainter>

namespace kestrune {

namespace {

// As tools/make_skin/editor_buttons.py draws them.
constexpr QSize wordSize(80, 26);
constexpr QSize folderSize(28, 24);
constexpr int keyStep = 88;
constexpr int lookStep = 32;
enum LookRow { NormalRow, HoverRow, PressedRow, OffRow };

QPoint PlaceOf(KeyFace face, LookRow row) {
    return {static_cast<int>(face) * keyStep, row * lookStep};
}

QSize SizeOf(KeyFace face) {
    return face == KeyFace::Folder ? folderSize : wordSize;
}

} // namespace

EditorKey::EditorKey(const SkinPicture& pictures, KeyFace face, QWidget* parent)
    : ImageButton(pictures, {.hover = PlaceOf(face, HoverRow), .pressed = PlaceOf(face, PressedRow)}, parent),
      pictures_(pictures),
      face_(face) {
    setFixedSize(SizeOf(face));
}

QRect EditorKey::NormalPiece(KeyFace face) {
    return {PlaceOf(face, NormalRow), SizeOf(face)};
}

QRect EditorKey::OffPiece(KeyFace face) {
    return {PlaceOf(face, OffRow), SizeOf(face)};
}

void EditorKey::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        pictures_.Paint(painter, {}, isEnabled() ? NormalPiece(face_) : OffPiece(face_));
    }
    ImageButton::paintEvent(event);
}

} // namespace kestrune
