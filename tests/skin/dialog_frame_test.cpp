#include "skin/dialog_frame.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gmock/gmock.h>

using namespace kestrune;

namespace {

struct OwnDialog : QDialog {
    OwnDialog() {
        setWindowTitle(QStringLiteral("Own"));
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&line);
        rows->addWidget(&ok);
        ok.setDefault(true);
        QObject::connect(&ok, &QPushButton::clicked, this, &QDialog::accept);
    }
    QLineEdit line;
    QPushButton ok{QStringLiteral("OK")};
};

void ShowAndWait(QDialog& dialog) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
}

template <class Child>
Child* Named(const QDialog& dialog, const char* name) {
    return dialog.findChild<Child*>(QString::fromLatin1(name));
}

} // namespace

TEST(DialogFrame, TheTitleStandsInABarOfTheDialogsOwn) {
    OwnDialog dialog;
    FrameDialog(dialog);
    ShowAndWait(dialog);
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
    ASSERT_NE(Named<QLabel>(dialog, "LabelTitle"), nullptr);
    EXPECT_EQ(Named<QLabel>(dialog, "LabelTitle")->text(), QStringLiteral("Own"));
    dialog.setWindowTitle(QStringLiteral("Other"));
    EXPECT_EQ(Named<QLabel>(dialog, "LabelTitle")->text(), QStringLiteral("Other"));
    const QLabel* title = Named<QLabel>(dialog, "LabelTitle");
    EXPECT_GE(dialog.line.mapTo(&dialog, QPoint()).y(),
              title->mapTo(&dialog, QPoint(0, title->height())).y());
    EXPECT_EQ(dialog.grab().toImage().pixelColor(0, 0).alpha(), 0);
}

TEST(DialogFrame, ImageQuitClosesIt) {
    OwnDialog dialog;
    FrameDialog(dialog);
    ShowAndWait(dialog);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QTest::mouseClick(Named<QPushButton>(dialog, "ImageQuit"), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(rejected.count(), 1);
}

TEST(DialogFrame, EscapeAndTheDefaultButtonWorkAsBefore) {
    OwnDialog dialog;
    FrameDialog(dialog);
    ShowAndWait(dialog);
    dialog.line.setFocus();
    QTest::keyClick(&dialog.line, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    ShowAndWait(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(DialogFrame, ASecondCallChangesNothing) {
    OwnDialog dialog;
    FrameDialog(dialog);
    const QMargins margins = dialog.contentsMargins();
    FrameDialog(dialog);
    EXPECT_EQ(dialog.contentsMargins(), margins);
    EXPECT_EQ(dialog.findChildren<QLabel*>(QStringLiteral("LabelTitle")).size(), 1);
}

TEST(DialogFrame, TheTitleDragsIt) {
    OwnDialog dialog;
    FrameDialog(dialog);
    ShowAndWait(dialog);
    dialog.move(100, 100);
    auto* title = Named<QLabel>(dialog, "LabelTitle");
    const auto mouse = [title](QEvent::Type type, QPointF screen, Qt::MouseButton button,
                               Qt::MouseButtons held) {
        QMouseEvent event(type, title->mapFromGlobal(screen), screen, button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(title, &event);
    };
    mouse(QEvent::MouseButtonPress, {120, 110}, Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseMove, {150, 130}, Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, {150, 130}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(dialog.pos(), QPoint(130, 120));
}

TEST(DialogFrame, EveryDialogIsFramedAMessageOfTheToolkitToo) {
    FrameAllDialogs(*qApp);
    QString title;
    bool frameless = false;
    bool seen = false;
    QTimer::singleShot(100, qApp, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            return;
        }
        seen = box->isVisible();
        frameless = box->windowFlags().testFlag(Qt::FramelessWindowHint);
        if (auto* label = box->findChild<QLabel*>(QStringLiteral("LabelTitle"))) {
            title = label->text();
        }
        QTest::keyClick(box, Qt::Key_Escape);
    });
    const auto answer = QMessageBox::question(nullptr, QStringLiteral("Kestrune"), QStringLiteral("Really?"),
                                              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(answer, QMessageBox::Cancel);
    EXPECT_TRUE(seen);
    EXPECT_TRUE(frameless);
    EXPECT_EQ(title, QStringLiteral("Kestrune"));
}

TEST(DialogFrame, AMessageBoxHasRoomForItsTextBelowTheTitle) {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Kestrune"),
                    QStringLiteral("The file is not there."));
    FrameDialog(box);
    ShowAndWait(box);
    auto* text = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(box.rect().contains(QRect(text->mapTo(&box, QPoint()), text->size())));
    EXPECT_GE(text->mapTo(&box, QPoint()).y(), 32);
    for (const QAbstractButton* button : box.buttons()) {
        EXPECT_TRUE(box.rect().contains(QRect(button->mapTo(&box, QPoint()), button->size())));
    }
}

TEST(DialogFrame, AFileDialogIsOursAndCanBeResized) {
    QFileDialog files;
    FrameDialog(files);
    EXPECT_TRUE(files.testOption(QFileDialog::DontUseNativeDialog));
    ShowAndWait(files);
    EXPECT_NE(files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), nullptr);
    int edges = 0;
    for (const QObject* child : files.children()) {
        edges += child->inherits("kestrune::ResizeEdge") ? 1 : 0;
    }
    EXPECT_EQ(edges, 8);
    QTest::keyClick(&files, Qt::Key_Escape);
    EXPECT_FALSE(files.isVisible());
}

TEST(DialogFrame, ABoxStandsInTheMiddleOfItsOwner) {
    QWidget owner(nullptr, Qt::FramelessWindowHint);
    owner.setGeometry(180, 140, 400, 300);
    owner.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&owner));
    QMessageBox box(QMessageBox::Information, QStringLiteral("Told"), QStringLiteral("Something"),
                    QMessageBox::Ok, &owner);
    FrameDialog(box);
    ShowAndWait(box);
    const QPoint off = box.frameGeometry().center() - owner.frameGeometry().center();
    EXPECT_LE(off.manhattanLength(), 2) << off.x() << " " << off.y();
}
