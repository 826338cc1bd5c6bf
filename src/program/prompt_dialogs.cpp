#include "program/prompt_dialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>

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

QStringList SelectedFiles(const QFileDialog& dialog, bool multiple) {
    QStringList chosen = dialog.selectedFiles();
    const auto* line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (line == nullptr || !multiple) {
        return chosen;
    }
    // Of several typed names the dialog gives only those that its list shows.
    const QStringList typed = TypedNames(line->text(), dialog.directory().absolutePath());
    return typed.size() > chosen.size() ? typed : chosen;
}

// The dialog itself only tells the filter's text, without the patterns that it hides.
int FilterIndex(const QFileDialog& dialog) {
    const auto* filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    return filters != nullptr ? filters->currentIndex() + 1 : 0;
}

} // namespace

QWidget* PromptDialogs::Front() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : owner_.data();
}

void PromptDialogs::Message(const QString& text, PromptIcon icon, const QString& caption) {
    QMessageBox box(IconOf(icon), caption, text, QMessageBox::Ok, Front());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool PromptDialogs::AskYesNo(const QString& text, PromptIcon icon, const QString& caption) {
    QMessageBox box(IconOf(icon), caption, text, QMessageBox::Yes | QMessageBox::No, Front());
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

FileAnswer PromptDialogs::ChooseFiles(const FileChoice& choice) {
    QFileDialog dialog(Front(), choice.title, choice.startFolder);
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
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    return {SelectedFiles(dialog, choice.multiple), choice.filter.isEmpty() ? 0 : FilterIndex(dialog)};
}

QString PromptDialogs::ChooseFolder(const QString& title, const QString& startFolder) {
    QFileDialog dialog(Front(), title, startFolder);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QStringList TypedNames(const QString& line, const QString& folder) {
    const QDir base(folder);
    const QStringList names =
        line.startsWith(u'"')
            ? line.split(u'"', Qt::SkipEmptyParts).filter(QRegularExpression(QStringLiteral("\\S")))
            : QStringList(line);
    QStringList paths;
    for (const QString& name : names) {
        if (!name.isEmpty()) {
            paths.append(QDir::cleanPath(base.absoluteFilePath(name)));
        }
    }
    return paths;
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
