#include "skin/dialog_frame.h"

#include "skin/corner_sizes.h"
#include "skin/dialog_title.h"
#include "skin/skin_icons.h"
#include "skin/window_chrome.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLayout>
#include <QTreeView>

namespace kestrune {

namespace {

const QString frameName = QStringLiteral("kestruneDialogFrame");
constexpr QSize fileDialogSize(680, 440);
constexpr int dateColumn = 3;
constexpr int dateWidth = 150;
constexpr int bodyMargin = 3; // beside what the dialog keeps itself

// Keeps the title and the edges where the dialog's size puts them.
class DialogFrame : public QObject {
public:
    explicit DialogFrame(QDialog& dialog)
        : QObject(&dialog), dialog_(dialog), chrome_(new WindowChrome(&dialog, corners::dialog)) {
        setObjectName(frameName);
        const QMargins own = dialog.contentsMargins();
        dialog.setContentsMargins(own.left() + bodyMargin, own.top() + DialogTitle::height,
                                  own.right() + bodyMargin, own.bottom() + bodyMargin);
        title_ = new DialogTitle(&dialog);
        title_->show();
        chrome_->AddTitle(title_->LabelTitle());
        chrome_->AddHand(title_->ImageQuit());
        dialog.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Show:
            MakeEdges();
            // Qt has left room for a frame of the system's.
            if (!event->spontaneous() && !dialog_.testAttribute(Qt::WA_Moved) &&
                dialog_.parentWidget() != nullptr) {
                chrome_->CentreOver(*dialog_.parentWidget());
            }
            // The file dialog restores its columns while it is being shown.
            QMetaObject::invokeMethod(
                this, [this] { WidenDates(); }, Qt::QueuedConnection);
            [[fallthrough]];
        case QEvent::Resize:
        case QEvent::WindowTitleChange:
        case QEvent::ModifiedChange:
            title_->Follow();
            for (ResizeEdge* edge : std::as_const(edges_)) {
                edge->Follow();
            }
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void WidenDates() {
        if (auto* details = dialog_.findChild<QTreeView*>(QStringLiteral("treeView"))) {
            if (qobject_cast<QFileDialog*>(&dialog_) != nullptr) {
                details->header()->resizeSection(dateColumn, dateWidth);
            }
        }
    }
    void MakeEdges() {
        if (!edges_.isEmpty() || dialog_.minimumSize() == dialog_.maximumSize() ||
            (dialog_.layout() != nullptr && dialog_.layout()->sizeConstraint() == QLayout::SetFixedSize)) {
            return;
        }
        using Qt::BottomEdge;
        using Qt::LeftEdge;
        using Qt::RightEdge;
        using Qt::TopEdge;
        for (const Qt::Edges edges :
             {Qt::Edges(LeftEdge), Qt::Edges(RightEdge), Qt::Edges(TopEdge), Qt::Edges(BottomEdge),
              LeftEdge | TopEdge, RightEdge | TopEdge, LeftEdge | BottomEdge, RightEdge | BottomEdge}) {
            auto* edge = new ResizeEdge(edges, &dialog_);
            edge->show();
            edges_.append(edge);
        }
    }

    QDialog& dialog_;
    WindowChrome* chrome_;
    DialogTitle* title_;
    QList<ResizeEdge*> edges_;
};

void DressFileDialog(QFileDialog& files) {
    // The dialog doesn't own its provider.
    class OwnedIcons : public QObject, public SkinFileIcons {
    public:
        using QObject::QObject;
    };
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.setIconProvider(new OwnedIcons(&files));
    files.resize(files.size().expandedTo(fileDialogSize));
}

class EveryDialog : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish) {
            auto* dialog = qobject_cast<QDialog*>(watched);
            if (dialog != nullptr && dialog->isWindow() &&
                !dialog->windowFlags().testFlag(Qt::FramelessWindowHint)) {
                FrameDialog(*dialog);
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void FrameDialog(QDialog& dialog) {
    if (dialog.findChild<QObject*>(frameName, Qt::FindDirectChildrenOnly) != nullptr) {
        return;
    }
    new DialogFrame(dialog);
    if (auto* files = qobject_cast<QFileDialog*>(&dialog)) {
        DressFileDialog(*files);
    }
}

void FrameAllDialogs(QApplication& application) {
    application.installEventFilter(new EveryDialog(&application));
}

} // namespace kestrune
