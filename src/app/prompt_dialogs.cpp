#include "app/prompt_dialogs.h"

#include <QFileDialog>
#include <QMessageBox>

namespace kestrune {

namespace {

QMessageBox::Icon IconOf(PromptIcon icon) {
    switch (icon) {
    case PromptIcon::Information:
        return QMessageBox::Information;
    case PromptIcon::Question:
        return QMessageBox::Question;
    case PromptIcon::Warning:
        return QMessageBox::Warning;
    case PromptIcon::Critical:
        return QMessageBox::Critical;
    case PromptIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void PromptDialogs::Message(const QString& text, PromptIcon icon) {
    QMessageBox box(IconOf(icon), QStringLiteral("Kestrune"), text, QMessageBox::Ok, owner_);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool PromptDialogs::AskYesNo(const QString& text, PromptIcon icon) {
    QMessageBox box(IconOf(icon), QStringLiteral("Kestrune"), text, QMessageBox::Yes | QMessageBox::No,
                    owner_);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

QStringList PromptDialogs::ChooseFiles(const FileChoice& choice) {
    QFileDialog dialog(owner_, choice.title, choice.startFolder);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(NameFilters(choice.filter));
    if (choice.save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
    } else if (choice.multiple) {
        dialog.setFileMode(QFileDialog::ExistingFiles);
    } else if (choice.mustExist) {
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

QStringList NameFilters(const QString& filter) {
    QStringList filters;
    const QStringList parts = filter.split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(u';');
        patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
        filters.append(parts[i] + QStringLiteral(" (") + patterns.join(u' ') + u')');
    }
    return filters;
}

} // namespace kestrune
