// The menus of the main window. They show the check marks of the options and run the options' actions.
#pragma once

#include "app/options.h"
#include "playlist/playlist_rows.h"

#include <QAction>
#include <QMenu>
#include <array>

namespace kestrune {

// What the entries run beyond the options. Window thread.
class MainMenus : public QObject {
    Q_OBJECT
public:
    // The menus are children of the window. Options and rows must outlive this object.
    MainMenus(QWidget* window, Options& options, PlaylistRows& rows);

    QMenu* mnuFile;
    QMenu* mnuPlay;
    QMenu* mnuOptions;
    QMenu* popmn; // of the list
    QAction* mnuPause;

signals:
    void StartChosen();
    void PauseChosen();
    void StopChosen();
    void ExitChosen();

private:
    void FillFile(QWidget* window);
    void FillPlay();
    void FillOptions();
    QMenu* SortMenu(QWidget* parent, const QString& name);
    QMenu* ItemMenu(QWidget* parent, const QString& name);
    void ShowChecks();

    Options& options_;
    PlaylistRows& rows_;
    std::array<QAction*, fftTypeCount> mOptions1_{};
    std::array<QAction*, fftResolutionCount> mOptions2_{};
    std::array<QAction*, 15> mOptions_{};
    QList<std::array<QAction*, playlistItemCount>> items_;
};

} // namespace kestrune
