#include "main_window/letter_keys.h"

#include <QLatin1String>
#include <QList>

namespace kestrune {

namespace {

// The letter rows of the keyboard, from the first place of each. X11 and Wayland count places alike.
struct LetterRow {
    quint32 firstPlace;
    QLatin1String letters;
};
const QList<LetterRow> letterRows = {
    {24, QLatin1String("QWERTYUIOP")}, {38, QLatin1String("ASDFGHJKL")}, {52, QLatin1String("ZXCVBNM")}};

// A letter of a script of its own, like Cyrillic or Greek. Qt gives the other keys codes beyond Unicode.
bool IsForeignLetter(int key) {
    if (key < 0x80 || key > 0x10FFFF) {
        return false;
    }
    const auto letter = static_cast<char32_t>(key);
    return QChar::isLetter(letter) && QChar::script(letter) != QChar::Script_Latin;
}

} // namespace

int LetterOf(const QKeyEvent& key) {
    if (key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z) {
        return key.key();
    }
    if (!IsForeignLetter(key.key())) {
        return 0;
    }
    const quint32 place = key.nativeScanCode();
    for (const LetterRow& row : letterRows) {
        if (place >= row.firstPlace && place - row.firstPlace < static_cast<quint32>(row.letters.size())) {
            return row.letters[static_cast<int>(place - row.firstPlace)].unicode();
        }
    }
    return 0;
}

} // namespace kestrune
