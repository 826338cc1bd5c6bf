// Everything that a rule has to ask or tell the user. Rules never open a window of their own.
#pragma once

#include <QString>
#include <QStringList>

namespace kestrune {

enum class PromptIcon { None, Information, Question, Warning, Critical };

// What a file dialog is to show.
struct FileChoice {
    QString title;
    QString startFolder; // empty: the current folder
    QString filter;      // entries "label|patterns|label|patterns", patterns parted by semicolons
    bool save = false;
    bool multiple = false;  // several files may be chosen
    bool mustExist = false; // only files that exist are accepted
};

// What the user has answered to it.
struct FileAnswer {
    QStringList files; // full paths in the order of choice; empty after a cancel
    // The filter that was set when the dialog was answered, counted from 1 in the order of the choice. 0
    // after a cancel, and for a choice without filters.
    int filterIndex = 0;
};

// Of a box that is given none of its own.
inline const QString defaultCaption = QStringLiteral("Kestrune");

class UserPrompts {
public:
    virtual ~UserPrompts() = default;
    // All calls: window thread; they return when the user has answered, and events run in the meantime.
    // An exclamation mark stands for PromptIcon::Warning. The caption is that of the box's window.
    virtual void Message(const QString& text, PromptIcon icon, const QString& caption) = 0;
    void Message(const QString& text, PromptIcon icon) { Message(text, icon, defaultCaption); }
    // True for Yes. Closing the box counts as No.
    virtual bool AskYesNo(const QString& text, PromptIcon icon, const QString& caption) = 0;
    bool AskYesNo(const QString& text, PromptIcon icon) { return AskYesNo(text, icon, defaultCaption); }
    // A save dialog asks nothing about a file that exists already.
    virtual FileAnswer ChooseFiles(const FileChoice& choice) = 0;
    // The folder browser under a title: a full path without a separator at its end (but "/"), empty when the
    // user cancels.
    virtual QString ChooseFolder(const QString& title, const QString& startFolder) = 0;
};

} // namespace kestrune
