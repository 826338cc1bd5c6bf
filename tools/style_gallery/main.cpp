// Takes a picture of every standard control in the skin's style.
#include "pages.h"
#include "skin/dialog_frame.h"
#include "skin/skin_style.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QHoverEvent>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QThread>
#include <QToolTip>
#include <cstdlib>
#include <memory>

namespace {

using namespace kestrune;

class Album {
public:
    explicit Album(const QString& folder) : folder_(folder) { folder_.mkpath(QStringLiteral(".")); }
    void Take(QWidget& widget, const QString& name) const {
        QCoreApplication::processEvents();
        widget.grab().save(folder_.filePath(name + QStringLiteral(".png")));
    }

private:
    QDir folder_;
};

// The mouse on a widget, as the style is told of it.
void PutMouseOn(QWidget* widget, const QPointF& at) {
    if (widget != nullptr) {
        QHoverEvent enter(QEvent::HoverEnter, at, widget->mapToGlobal(at), QPointF(-1, -1));
        QCoreApplication::sendEvent(widget, &enter);
        widget->setAttribute(Qt::WA_UnderMouse);
        QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
        widget->update();
    }
}

void TakePages(const Album& album) {
    const std::pair<const char*, QDialog* (*)()> pages[] = {
        {"buttons", ButtonsPage}, {"fields", FieldsPage}, {"lists", ListsPage}, {"tabs", TabsPage}};
    for (const auto& [name, make] : pages) {
        const std::unique_ptr<QDialog> page(make());
        page->show();
        page->activateWindow();
        // As if the keyboard had been used last.
        page->setAttribute(Qt::WA_KeyboardFocusChange);
        QCoreApplication::processEvents();
        for (const char* focused : {"focus", "line", "list"}) {
            if (auto* widget = page->findChild<QWidget*>(QString::fromLatin1(focused))) {
                widget->setFocus(Qt::TabFocusReason);
            }
        }
        PutMouseOn(page->findChild<QWidget*>(QStringLiteral("hover")), {5, 5});
        PutMouseOn(page->findChild<QWidget*>(QStringLiteral("check0")), {5, 5});
        if (auto* list = page->findChild<QListWidget*>(QStringLiteral("list"))) {
            PutMouseOn(list->viewport(), list->visualItemRect(list->item(4)).center());
        }
        QThread::msleep(500); // until the bar without an end has moved into sight
        album.Take(*page, QString::fromLatin1(name));
    }
    const std::unique_ptr<QMenu> menu(MenuPage());
    menu->popup({20, 20});
    menu->setActiveAction(menu->actions().at(1));
    album.Take(*menu, QStringLiteral("menu"));
    menu->close();
}

void TakeDialogs(const Album& album) {
    const std::pair<const char*, QMessageBox::Icon> boxes[] = {
        {"message-information", QMessageBox::Information},
        {"message-question", QMessageBox::Question},
        {"message-warning", QMessageBox::Warning},
        {"message-error", QMessageBox::Critical}};
    for (const auto& [name, icon] : boxes) {
        QMessageBox box(icon, QStringLiteral("Kestrune"),
                        QStringLiteral("The file could not be opened.\nDo you want to go on?"),
                        QMessageBox::Yes | QMessageBox::No);
        box.show();
        album.Take(box, QString::fromLatin1(name));
    }
    QFileDialog files(nullptr, QStringLiteral("Add files"), QDir::rootPath(),
                      QStringLiteral("Sound files (*.wav *.mp3)"));
    files.setFileMode(QFileDialog::ExistingFiles);
    files.show();
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    album.Take(files, QStringLiteral("file-dialog"));
    QColorDialog colour(QColor(128, 128, 255));
    colour.show();
    album.Take(colour, QStringLiteral("colour-dialog"));
    QInputDialog input;
    input.setLabelText(QStringLiteral("Address:"));
    input.show();
    album.Take(input, QStringLiteral("input-dialog"));
    QToolTip::showText({40, 40}, QStringLiteral("Adds files to the list"));
    QCoreApplication::processEvents();
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QTipLabel")) {
            album.Take(*widget, QStringLiteral("tool-tip"));
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kestrune"));
    if (argc < 2) {
        qWarning("Name the folder for the pictures.");
        return EXIT_FAILURE;
    }
    ApplySkinStyle(application);
    FrameAllDialogs(application);
    const Album album(QString::fromLocal8Bit(argv[1]));
    TakePages(album);
    TakeDialogs(album);
    return EXIT_SUCCESS;
}
