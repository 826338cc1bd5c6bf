// The picture keys of the tag editor and the cue list.
#pragma once

#include "skin/image_button.h"
#include "skin/skin_picture.h"

namespace kestrune {

// What is drawn on a key, in the order of the picture's columns.
enum class KeyFace { Update, Close, Previous, Next, Cues, Add, Delete, Folder };

// A key that draws its normal look and its disabled one too, so that it can stand anywhere on the body. The
// pictures must outlive it. Window thread.
class EditorKey : public ImageButton {
    Q_OBJECT
public:
    static constexpr int faceCount = 8;

    // Takes the size of its face.
    EditorKey(const SkinPicture& pictures, KeyFace face, QWidget* parent);

    // Where a face's looks lie in the pictures.
    static QRect NormalPiece(KeyFace face);
    static QRect OffPiece(KeyFace face);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const SkinPicture& pictures_;
    KeyFace face_;
};

} // namespace kestrune
