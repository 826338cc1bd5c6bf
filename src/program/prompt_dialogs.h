// The boxes and file dialogs of the running program.
#pragma once

#include "components/user_prompts.h"

#include <QPointer>
#include <QWidget>

namespace kestrune {

// Message boxes and file dialogs. Window thread.
class PromptDialogs : public UserPrompts {
public:
    // The window over which they open when no modal one is open; may be null.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    using UserPrompts::AskYesNo;
    using UserPrompts::Message;
    void Message(const QString& text, PromptIcon icon, const QString& caption) override;
    bool AskYesNo(const QString& text, PromptIcon icon, const QString& caption) override;
    FileAnswer ChooseFiles(const FileChoice& choice) override;
    QString ChooseFolder(const QString& title, const QString& startFolder) override;

private:
    // The window in front: a modal one goes before the owner.
    QWidget* Front() const;

    QPointer<QWidget> owner_;
};

// The names in a file dialog's line, as paths: one name, or several in quotation marks with blanks between.
// A name without a folder is taken in `folder`.
QStringList TypedNames(const QString& line, const QString& folder);

// The entries "label|patterns|label|patterns" in the form that QFileDialog takes.
QStringList NameFilters(const QString& filter);

} // namespace kestrune
