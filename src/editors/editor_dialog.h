// What the windows of the editors have in common: title, body, a row of keys.
#pragma once

#include "skin/body_key.h"
#include "skin/titled_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kestrune {

// A dialog with LabelTitle and ImageQuit at the top and a row of keys at the bottom. Escape and ImageQuit
// close it. Its size is fixed. Window thread.
class EditorDialog : public TitledDialog {
    Q_OBJECT
public:
    EditorDialog(const QString& name, const QString& title, const QSize& corners, QWidget* owner);

protected:
    QHBoxLayout& Keys() { return *keys_; }
    // A key that opens a file; the caller puts it into a layout.
    BodyKey* MakeFolderKey(const QString& name, const QString& accessibleName);
    // The key ImageCMD(index) behind those that are in the row already.
    BodyKey* AddKey(int index, const QString& word);
    // A captioned one-line box in a row of the grid. The caption, less a colon, is its accessible name.
    QLineEdit* AddField(QGridLayout* grid, int row, const QString& name, const QString& caption);
    // A caption before `control`, in a place of the grid; gives the control its accessible name.
    void AddCaption(QGridLayout* grid, int row, int column, const QString& caption, QWidget* control);
    QLineEdit* MakeBox(const QString& name);
    // Adds title and keys. Called once all controls are made, since Tab goes by the order of making.
    void Finish();

private:
    BodyKey* Equip(BodyKey* key, const QString& name);

    BodyKeyPictures pictures_;
    QHBoxLayout* keys_;
    int hoverGroup_;
    int keyCount_ = 0;
};

// With the beginning of the text in sight.
void ShowText(QLineEdit* box, const QString& text);

} // namespace kestrune
