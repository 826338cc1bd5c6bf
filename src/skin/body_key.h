// A key that can stand anywhere on the body: it draws its normal look and its disabled one too.
#pragma once

#include "skin/image_button.h"
#include "skin/skin_picture.h"

namespace kestrune {

// The pictures of all body keys: blank ones for words, and the ones with a glyph. Window thread.
class BodyKeyPictures : public SkinPicture {
public:
    BodyKeyPictures();
};

// Takes the size of its face. A word is the button's text: painted by font in the middle of a blank key, lit
// and sunk with it, and cut with an ellipsis if it is too long. It is the accessible name, too. The pictures
// must outlive the key. Window thread.
class BodyKey : public ImageButton {
    Q_OBJECT
public:
    enum class Face { Word, Folder }; // in the order of the picture's columns
    static constexpr int faceCount = 2;

    BodyKey(const BodyKeyPictures& pictures, const QString& word, QWidget* parent);
    // A key without a word; the name is for a screen reader.
    BodyKey(const BodyKeyPictures& pictures, Face face, const QString& name, QWidget* parent);

    // Where a face's looks lie in the pictures.
    static QRect NormalPiece(Face face);
    static QRect OffPiece(Face face);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintWord();

    const BodyKeyPictures& pictures_;
    Face face_;
};

} // namespace kestrune
