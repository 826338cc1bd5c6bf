// One of the labels in the menu channel: a word that lights under the mouse.
#pragma once

#include <QAbstractButton>

namespace kestrune {

// The text may hold an ampersand before the letter that opens it with Alt. Window thread.
class MenuLabel : public QAbstractButton {
    Q_OBJECT
public:
    explicit MenuLabel(const QString& text, QWidget* parent = nullptr);

    // Else it opens a window.
    void SetOpensMenu(bool opens) { opensMenu_ = opens; }
    bool OpensMenu() const { return opensMenu_; }
    // Underlines the letter, while Alt is held.
    void ShowLetter(bool shown);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool opensMenu_ = true;
    bool lit_ = false;
    bool letterShown_ = false;
};

} // namespace kestrune
