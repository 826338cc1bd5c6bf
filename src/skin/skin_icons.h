// The icons of message boxes and file dialogs.
#pragma once

#include <QFileIconProvider>
#include <QIcon>
#include <QStyle>

namespace kestrune {

// Sharp at every scale. Null for what has no icon of our own.
QIcon SkinIcon(QStyle::StandardPixmap icon);

// For file dialogs: folders, files and drives as the skin draws them, whatever the desktop's theme.
class SkinFileIcons : public QFileIconProvider {
public:
    QIcon icon(IconType type) const override;
    QIcon icon(const QFileInfo& file) const override;
};

} // namespace kestrune
