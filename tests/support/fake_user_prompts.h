// Prompts that answer from a list and remember what they were asked.
#pragma once

#include "components/user_prompts.h"

#include <QList>

namespace kestrune {

class FakeUserPrompts : public UserPrompts {
public:
    struct Shown {
        QString text;
        PromptIcon icon;
    };
    QList<Shown> messages;
    QList<Shown> questions;
    QList<FileChoice> choices;
    QList<bool> answers;              // taken from the front; true when it is empty
    QStringList folderTitles;         // of the folder browsers shown
    QStringList foldersToChoose;      // taken from the front; a cancel when it is empty
    QList<QStringList> filesToChoose; // taken from the front; a cancel when it is empty

    void Message(const QString& text, PromptIcon icon) override { messages.append({text, icon}); }
    bool AskYesNo(const QString& text, PromptIcon icon) override {
        questions.append({text, icon});
        return answers.isEmpty() ? true : answers.takeFirst();
    }
    QStringList ChooseFiles(const FileChoice& choice) override {
        choices.append(choice);
        return filesToChoose.isEmpty() ? QStringList() : filesToChoose.takeFirst();
    }
    QString ChooseFolder(const QString& title, const QString& /*startFolder*/) override {
        folderTitles.append(title);
        return foldersToChoose.isEmpty() ? QString() : foldersToChoose.takeFirst();
    }
};

} // namespace kestrune
