#include "skin/skin_icons.h"

#include <QFileInfo>

namespace kestrune {

namespace {

const char* NameOf(QStyle::StandardPixmap icon) {
    switch (icon) {
    case QStyle::SP_MessageBoxInformation:
        return "information";
    case QStyle::SP_MessageBoxQuestion:
        return "question";
    case QStyle::SP_MessageBoxWarning:
        return "warning";
    case QStyle::SP_MessageBoxCritical:
        return "error";
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirLinkIcon:
        return "folder";
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirLinkOpenIcon:
        return "folder-open";
    case QStyle::SP_DirHomeIcon:
        return "home";
    case QStyle::SP_FileIcon:
    case QStyle::SP_FileLinkIcon:
        return "file";
    case QStyle::SP_DriveHDIcon:
    case QStyle::SP_DriveFDIcon:
    case QStyle::SP_DriveNetIcon:
        return "drive";
    case QStyle::SP_DriveCDIcon:
    case QStyle::SP_DriveDVDIcon:
        return "disc";
    case QStyle::SP_ComputerIcon:
    case QStyle::SP_DesktopIcon:
        return "computer";
    case QStyle::SP_TrashIcon:
        return "trash";
    case QStyle::SP_FileDialogNewFolder:
        return "folder-new";
    case QStyle::SP_FileDialogToParent:
    case QStyle::SP_ArrowUp:
        return "up";
    case QStyle::SP_FileDialogBack:
    case QStyle::SP_ArrowBack:
    case QStyle::SP_ArrowLeft:
        return "back";
    case QStyle::SP_ArrowForward:
    case QStyle::SP_ArrowRight:
        return "forward";
    case QStyle::SP_FileDialogDetailedView:
        return "details";
    case QStyle::SP_FileDialogListView:
        return "list";
    case QStyle::SP_LineEditClearButton:
    case QStyle::SP_DialogCloseButton:
    case QStyle::SP_TitleBarCloseButton:
        return "close";
    default:
        return nullptr;
    }
}

QIcon Named(const char* name) {
    return QIcon(QStringLiteral(":/skin/icons/%1.svg").arg(QLatin1String(name)));
}

} // namespace

QIcon SkinIcon(QStyle::StandardPixmap icon) {
    const char* name = NameOf(icon);
    return name != nullptr ? Named(name) : QIcon();
}

QIcon SkinFileIcons::icon(IconType type) const {
    switch (type) {
    case Computer:
    case Desktop:
        return Named("computer");
    case Trashcan:
        return Named("trash");
    case Drive:
        return Named("drive");
    case Folder:
    case Network:
        return Named("folder");
    default:
        return Named("file");
    }
}

QIcon SkinFileIcons::icon(const QFileInfo& file) const {
    if (file.isRoot()) {
        return Named("drive");
    }
    return Named(file.isDir() ? "folder" : "file");
}

} // namespace kestrune
