// The menus of the main window. They show the check marks of the options and run the options' and the
// routing's actions.
#pragma once

#include "app/options.h"
#include "main_window/menu_routing.h"
#include "playlist/playlist_rows.h"

#include <QAction>
#include <QMenu>
#include <array>
#include <functional>

namespace kestrune {

// What the entries run beyond the options. Window thread.
class MainMenus : public QObject {
    Q_OBJECT
public:
    // The menus are children of the window. What is passed in must outlive this object.
    MainMenus(QWidget* window, Options& options, PlaylistRows& rows, MenuRouting& routing);

    QMenu* mnuFile;
    QMenu* mnuPlay;
    QMenu* mnuBurn;
    QMenu* mnuConvert;
    QMenu* mnuHelp;
    QMenu* mnuOptions;
    QMenu* popmn; // of the list
    QAction* mnuPause;

    QMenu* Menu(MainMenu menu) const;

signals:
    void StartChosen();
    void PauseChosen();
    void StopChosen();
    void ExitChosen();

private:
    using Run = std::function<void(MenuRouting&, int)>;

    void FillFile(QWidget* window);
    void FillPlay();
    void FillTools();
    void FillPopup(QWidget* window);
    void FillOptions();
    // An entry with its index; `run` is called with the index.
    void Add(QMenu* menu, const QString& array, int index, const QString& caption, const Run& run);
    QMenu* SortMenu(QWidget* parent, const QString& name);
    QMenu* ItemMenu(QWidget* parent, const QString& name);
    void ShowChecks();

    Options& options_;
    PlaylistRows& rows_;
    MenuRouting& routing_;
    std::array<QAction*, fftTypeCount> mOptions1_{};
    std::array<QAction*, fftResolutionCount> mOptions2_{};
    std::array<QAction*, 15> mOptions_{};
    QList<std::array<QAction*, playlistItemCount>> items_;
};

} // namespace kestrune
