#include "main_window/main_menus.h"

#include "playlist/playlist_order.h"

namespace kestrune {

namespace {

struct Entry {
    int index;
    QString caption; // "-" is a separator
};

template <typename Index>
QString Indexed(const QString& name, Index index) {
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

} // namespace

MainMenus::MainMenus(QWidget* window, Options& options, PlaylistRows& rows, MenuRouting& routing)
    : QObject(window),
      mnuFile(new QMenu(window)),
      mnuPlay(new QMenu(window)),
      mnuBurn(new QMenu(window)),
      mnuConvert(new QMenu(window)),
      mnuHelp(new QMenu(window)),
      mnuOptions(new QMenu(window)),
      popmn(new QMenu(window)),
      mnuPause(nullptr),
      options_(options),
      rows_(rows),
      routing_(routing) {
    FillFile(window);
    FillPlay();
    FillTools();
    FillPopup(window);
    FillOptions();
    mnuFile->setAccessibleName(tr("File"));
    mnuPlay->setAccessibleName(tr("Play"));
    mnuBurn->setAccessibleName(tr("Burn"));
    mnuConvert->setAccessibleName(tr("Convert"));
    mnuHelp->setAccessibleName(tr("Help"));
    mnuOptions->setAccessibleName(tr("Options"));
    popmn->setAccessibleName(tr("Playlist"));
    connect(&options_, &Options::Changed, this, &MainMenus::ShowChecks);
    ShowChecks();
}

QMenu* MainMenus::Menu(MainMenu menu) const {
    switch (menu) {
    case MainMenu::File:
        return mnuFile;
    case MainMenu::Play:
        return mnuPlay;
    case MainMenu::Burn:
        return mnuBurn;
    case MainMenu::Convert:
        return mnuConvert;
    case MainMenu::Help:
        return mnuHelp;
    case MainMenu::Options:
        break;
    }
    return mnuOptions;
}

void MainMenus::Add(QMenu* menu, const QString& array, int index, const QString& caption, const Run& run) {
    if (caption == QLatin1String("-")) {
        menu->addSeparator();
        return;
    }
    QAction* entry = menu->addAction(caption);
    entry->setObjectName(Indexed(array, index));
    // Later: a window that opens would keep a screen reader, which pressed the entry, waiting until it is
    // closed.
    connect(
        entry, &QAction::triggered, &routing_, [this, run, index] { run(routing_, index); },
        Qt::QueuedConnection);
}

QMenu* MainMenus::SortMenu(QWidget* parent, const QString& name) {
    auto* menu = new QMenu(tr("Sort by..."), parent);
    const std::array<QString, 6> captions = {tr("Index"), tr("Title"), tr("Duration"),
                                             tr("Type"),  tr("Size"),  tr("Path")};
    for (size_t i = 0; i < captions.size(); ++i) {
        QAction* entry = menu->addAction(captions[i]);
        entry->setObjectName(Indexed(name, i));
        connect(entry, &QAction::triggered, this, [this, i] { OrderList(rows_, static_cast<int>(i)); });
    }
    return menu;
}

QMenu* MainMenus::ItemMenu(QWidget* parent, const QString& name) {
    auto* menu = new QMenu(tr("Playlist Items"), parent);
    const std::array<QString, 9> captions = {tr("Title"),          tr("Duration"),      tr("Type"),
                                             tr("Size"),           tr("Path"),          tr("File Name"),
                                             tr("Format Strings"), QStringLiteral("-"), tr("Default")};
    std::array<QAction*, playlistItemCount> entries{};
    for (size_t i = 0; i < captions.size(); ++i) {
        if (captions[i] == QLatin1String("-")) {
            menu->addSeparator();
            continue;
        }
        QAction* entry = menu->addAction(captions[i]);
        entry->setObjectName(Indexed(name, i));
        if (i < entries.size()) {
            entry->setCheckable(true);
            entries[i] = entry;
        }
        connect(entry, &QAction::triggered, this,
                [this, i] { options_.mnplaylistitem_Click(static_cast<int>(i)); });
    }
    items_.append(entries);
    return menu;
}

void MainMenus::FillFile(QWidget* window) {
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    mnuFile->addMenu(SortMenu(window, QStringLiteral("mnSort")));
    mnuFile->addSeparator();
    mnuFile->addMenu(ItemMenu(window, QStringLiteral("mnplaylistitem")));
    mnuFile->addSeparator();
    QAction* edit = mnuFile->addAction(tr("Ed&it Tags"));
    edit->setObjectName(QStringLiteral("mnfile(8)"));
    connect(edit, &QAction::triggered, &routing_, &MenuRouting::EditTags, Qt::QueuedConnection);
    mnuFile->addSeparator();
    QAction* exit = mnuFile->addAction(tr("E&xit"));
    exit->setObjectName(QStringLiteral("mnfile(10)"));
    connect(exit, &QAction::triggered, this, &MainMenus::ExitChosen);
}

void MainMenus::FillTools() {
    mnuBurn->setObjectName(QStringLiteral("mnuBurn"));
    const std::array<QString, 5> burn = {tr("Open Burning Window"), QStringLiteral("-"),
                                         tr("Burn Selected Files"), tr("Burn Unselected Files"),
                                         tr("Burn All Files")};
    mnuConvert->setObjectName(QStringLiteral("mnuConvert"));
    const std::array<QString, 5> convert = {tr("Open Converting Window"), QStringLiteral("-"),
                                            tr("Convert Selected Files"), tr("Convert UnSelected Files"),
                                            tr("Convert All Files")};
    for (size_t i = 0; i < burn.size(); ++i) {
        Add(mnuBurn, QStringLiteral("mBurn"), static_cast<int>(i), burn[i], &MenuRouting::mBurn_Click);
        Add(mnuConvert, QStringLiteral("mConvert"), static_cast<int>(i), convert[i],
            &MenuRouting::mConvert_Click);
    }
    mnuHelp->setObjectName(QStringLiteral("mnuHelp"));
    const std::array<Entry, 9> help = {{{1, tr("&Help")},
                                        {2, QStringLiteral("-")},
                                        {3, tr("Home&page")},
                                        {8, QStringLiteral("-")},
                                        {9, tr("&Subscription Newsletters")},
                                        {10, QStringLiteral("-")},
                                        {11, tr("&Live Update")},
                                        {12, QStringLiteral("-")},
                                        {13, tr("&About")}}};
    for (const Entry& entry : help) {
        Add(mnuHelp, QStringLiteral("mHelp"), entry.index, entry.caption, &MenuRouting::mHelp_Click);
    }
}

void MainMenus::FillPopup(QWidget* window) {
    popmn->setObjectName(QStringLiteral("popmn"));
    popmn->addMenu(SortMenu(window, QStringLiteral("mnpopsort")));
    popmn->addSeparator();
    popmn->addMenu(ItemMenu(window, QStringLiteral("popplaylistitem")));
    const std::array<Entry, 10> entries = {{{6, QStringLiteral("-")},
                                            {7, tr("Edit Tags")},
                                            {8, QStringLiteral("-")},
                                            {9, tr("Burn Selected Files")},
                                            {10, tr("Burn UnSelected Files")},
                                            {11, tr("Burn All Files")},
                                            {12, QStringLiteral("-")},
                                            {13, tr("Convert Selected Files")},
                                            {14, tr("Convert UnSelected Files")},
                                            {15, tr("Convert All Files")}}};
    for (const Entry& entry : entries) {
        Add(popmn, QStringLiteral("mnpop"), entry.index, entry.caption, &MenuRouting::mnpop_Click);
    }
}

void MainMenus::FillPlay() {
    mnuPlay->setObjectName(QStringLiteral("mnuPlay"));
    QAction* start = mnuPlay->addAction(tr("&Start"));
    start->setObjectName(QStringLiteral("mnuStart"));
    connect(start, &QAction::triggered, this, &MainMenus::StartChosen);
    mnuPause = mnuPlay->addAction(tr("P&ause"));
    mnuPause->setObjectName(QStringLiteral("mnuPause"));
    connect(mnuPause, &QAction::triggered, this, &MainMenus::PauseChosen);
    QAction* stop = mnuPlay->addAction(tr("S&top"));
    stop->setObjectName(QStringLiteral("mnuStop"));
    connect(stop, &QAction::triggered, this, &MainMenus::StopChosen);
}

void MainMenus::FillOptions() {
    mnuOptions->setObjectName(QStringLiteral("mnuOptions"));
    const std::array<QString, 15> captions = {tr("FFT Display Type"),
                                              tr("FFT Display Resolution"),
                                              QStringLiteral("-"),
                                              tr("Continuous"),
                                              tr("Shuffle"),
                                              tr("Repeat"),
                                              QString(),
                                              QStringLiteral("-"),
                                              tr("Initialize"),
                                              tr("Use Default"),
                                              tr("Save as Default"),
                                              QStringLiteral("-"),
                                              tr("Use Default on Startup"),
                                              QString(),
                                              QString()};
    for (size_t i = 0; i < captions.size(); ++i) {
        if (captions[i].isEmpty()) {
            continue;
        }
        if (captions[i] == QLatin1String("-")) {
            mnuOptions->addSeparator();
            continue;
        }
        mOptions_[i] = mnuOptions->addAction(captions[i]);
        mOptions_[i]->setObjectName(Indexed(QStringLiteral("mOptions"), i));
        mOptions_[i]->setCheckable((i >= 3 && i <= 5) || i == 12);
        connect(mOptions_[i], &QAction::triggered, this, [this, i] {
            options_.mOptions_Click(static_cast<int>(i));
            ShowChecks();
        });
    }
    const std::array<QString, fftTypeCount> types = {tr("Level Bars"), tr("Analog"), tr("FFT Fire"),
                                                     tr("FFT Glass"), tr("FFT Kryptonite")};
    auto* typeMenu = new QMenu(mnuOptions);
    auto* sizeMenu = new QMenu(mnuOptions);
    for (size_t i = 0; i < types.size(); ++i) {
        mOptions1_[i] = typeMenu->addAction(types[i]);
        mOptions1_[i]->setObjectName(Indexed(QStringLiteral("mOptions1"), i));
        mOptions1_[i]->setCheckable(true);
        connect(mOptions1_[i], &QAction::triggered, this,
                [this, i] { options_.mOptions1_Click(static_cast<int>(i)); });
        mOptions2_[i] = sizeMenu->addAction(QString::number(fftSizes[i]));
        mOptions2_[i]->setObjectName(Indexed(QStringLiteral("mOptions2"), i));
        mOptions2_[i]->setCheckable(true);
        connect(mOptions2_[i], &QAction::triggered, this,
                [this, i] { options_.mOptions2_Click(static_cast<int>(i)); });
    }
    mOptions_[0]->setMenu(typeMenu);
    mOptions_[1]->setMenu(sizeMenu);
}

void MainMenus::ShowChecks() {
    for (size_t i = 0; i < mOptions1_.size(); ++i) {
        mOptions1_[i]->setChecked(options_.FftType() == static_cast<int>(i));
        mOptions2_[i]->setChecked(options_.FftResolution() == static_cast<int>(i));
    }
    mOptions_[1]->setEnabled(options_.IsResolutionEnabled());
    for (size_t i = 0; i < 3; ++i) {
        mOptions_[i + 3]->setChecked(options_.IsModeChecked(static_cast<PlayMode>(i)));
    }
    mOptions_[12]->setChecked(options_.UseDefaultOnStartup());
    for (const auto& entries : items_) {
        for (size_t i = 0; i < entries.size(); ++i) {
            entries[i]->setChecked(options_.Items()[i]);
        }
    }
}

} // namespace kestrune
