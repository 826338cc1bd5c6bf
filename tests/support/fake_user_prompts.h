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
        QString caption;
    };
    QList<Shown> messages;
    QList<Shown> questions;
    QList<FileChoice> choices;
    QList<bool> answers;              // taken from the front; true when it is empty
    QStringList folderTitles;         // of the folder browsers shown
    QStringList foldersToChoose;      // taken from the front; a cancel when it is empty
    QList<QStringList> filesToChoose; // taken from the front; a cancel when it is empty
    QList<int> filtersToChoose;       // the same, for choices that have filters; the first when it is empty

    using UserPrompts::AskYesNo;
    using UserPrompts::Message;
    void Message(const QString& text, PromptIcon icon, const QString& caption) override {
        messages.append({text, icon, caption});
    }
    bool AskYesNo(const QString& text, PromptIcon icon, const QString& caption) override {
        questions.append({text, icon, caption});
        return answers.isEmpty() ? true : answers.takeFirst();
    }
    FileAnswer ChooseFiles(const FileChoice& choice) override {
        choices.append(choice);
        FileAnswer answer;
        answer.files = filesToChoose.isEmpty() ? QStringList() : filesToChoose.takeFirst();
        if (!answer.files.isEmpty() && !choice.filter.isEmpty()) {
            answer.filterIndex = filtersToChoose.isEmpty() ? 1 : filtersToChoose.takeFirst();
        }
        return answer;
    }
    QString ChooseFolder(const QString& title, const QString& /*startFolder*/) override {
        folderTitles.append(title);
        return foldersToChoose.isEmpty() ? QString() : foldersToChoose.takeFirst();
    }
};

} // namespace kestrune
