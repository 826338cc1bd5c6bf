#include "pages.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

namespace kestrune {

namespace {

QDialog* Page(const char* title) {
    auto* page = new QDialog;
    page->setWindowTitle(QString::fromLatin1(title));
    return page;
}

QPushButton* Button(const char* text, QWidget* parent) {
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setAutoDefault(false);
    return button;
}

void AddSwitches(QDialog* page, QGridLayout* grid, int row) {
    const char* names[] = {"&Off", "O&n", "Disabled", "Disabled, on"};
    for (int i = 0; i < 4; ++i) {
        auto* box = new QCheckBox(QString::fromLatin1(names[i]), page);
        box->setChecked(i % 2 == 1);
        box->setEnabled(i < 2);
        box->setObjectName(QStringLiteral("check%1").arg(i));
        grid->addWidget(box, row, i);
        auto* holder = new QWidget(page);
        auto* radio = new QRadioButton(QString::fromLatin1(names[i]), holder);
        radio->setChecked(i % 2 == 1);
        radio->setEnabled(i < 2);
        auto* line = new QHBoxLayout(holder);
        line->setContentsMargins({});
        line->addWidget(radio);
        grid->addWidget(holder, row + 1, i);
    }
    auto* partly = new QCheckBox(QStringLiteral("Partly"), page);
    partly->setTristate(true);
    partly->setCheckState(Qt::PartiallyChecked);
    grid->addWidget(partly, row, 4);
}

} // namespace

QDialog* ButtonsPage() {
    QDialog* page = Page("Buttons");
    auto* grid = new QGridLayout(page);
    grid->addWidget(Button("&Normal", page), 0, 0);
    QPushButton* hover = Button("Hover", page);
    hover->setObjectName(QStringLiteral("hover"));
    grid->addWidget(hover, 0, 1);
    QPushButton* down = Button("Pressed", page);
    down->setDown(true);
    grid->addWidget(down, 0, 2);
    QPushButton* off = Button("Disabled", page);
    off->setEnabled(false);
    grid->addWidget(off, 0, 3);
    QPushButton* standard = Button("Default", page);
    standard->setDefault(true);
    grid->addWidget(standard, 0, 4);
    QPushButton* on = Button("Checked", page);
    on->setCheckable(true);
    on->setChecked(true);
    grid->addWidget(on, 1, 0);
    QPushButton* focus = Button("Focus", page);
    focus->setObjectName(QStringLiteral("focus"));
    grid->addWidget(focus, 1, 1);
    QPushButton* icon = Button("Icon", page);
    icon->setIcon(page->style()->standardIcon(QStyle::SP_DirIcon));
    grid->addWidget(icon, 1, 2);
    auto* tools = new QHBoxLayout;
    for (const auto picture :
         {QStyle::SP_FileDialogBack, QStyle::SP_ArrowForward, QStyle::SP_FileDialogToParent,
          QStyle::SP_FileDialogNewFolder, QStyle::SP_FileDialogListView, QStyle::SP_FileDialogDetailedView,
          QStyle::SP_DirHomeIcon, QStyle::SP_DriveHDIcon, QStyle::SP_DriveCDIcon, QStyle::SP_ComputerIcon,
          QStyle::SP_TrashIcon, QStyle::SP_FileIcon, QStyle::SP_DirOpenIcon,
          QStyle::SP_TitleBarCloseButton}) {
        auto* tool = new QToolButton(page);
        tool->setAutoRaise(tools->count() > 0);
        tool->setEnabled(tools->count() != 3);
        tool->setIcon(page->style()->standardIcon(picture));
        tools->addWidget(tool);
    }
    grid->addLayout(tools, 2, 0, 1, 5);
    AddSwitches(page, grid, 3);
    auto* icons = new QHBoxLayout;
    for (const auto picture : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion,
                               QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical}) {
        auto* label = new QLabel(page);
        label->setPixmap(page->style()->standardPixmap(picture, nullptr, label));
        icons->addWidget(label);
    }
    grid->addLayout(icons, 5, 0, 1, 4);
    return page;
}

QDialog* FieldsPage() {
    QDialog* page = Page("Fields, sliders, progress");
    auto* grid = new QGridLayout(page);
    for (int column = 0; column < 2; ++column) {
        const bool enabled = column == 0;
        auto* holder = new QWidget(page);
        auto* form = new QGridLayout(holder);
        auto* line = new QLineEdit(QStringLiteral("harbour steps"), holder);
        line->setObjectName(enabled ? QStringLiteral("line") : QString());
        line->setSelection(0, 7);
        auto* empty = new QLineEdit(holder);
        empty->setPlaceholderText(QStringLiteral("Artist"));
        empty->setClearButtonEnabled(true);
        auto* combo = new QComboBox(holder);
        combo->addItems({QStringLiteral("44,100 Hz"), QStringLiteral("48,000 Hz")});
        auto* editable = new QComboBox(holder);
        editable->setEditable(true);
        editable->addItem(QStringLiteral("128 kbit/s"));
        auto* spin = new QSpinBox(holder);
        spin->setSuffix(QStringLiteral(" ms"));
        auto* slider = new QSlider(Qt::Horizontal, holder);
        slider->setValue(40);
        slider->setTickPosition(QSlider::TicksBelow);
        auto* progress = new QProgressBar(holder);
        progress->setValue(46);
        auto* busy = new QProgressBar(holder);
        busy->setRange(0, 0);
        int row = 0;
        for (QWidget* field :
             std::initializer_list<QWidget*>{line, empty, combo, editable, spin, slider, progress, busy}) {
            form->addWidget(new QLabel(QStringLiteral("Label"), holder), row, 0);
            form->addWidget(field, row++, 1);
        }
        auto* upright = new QSlider(Qt::Vertical, holder);
        upright->setValue(70);
        form->addWidget(upright, 0, 2, row, 1);
        auto* rising = new QProgressBar(holder);
        rising->setOrientation(Qt::Vertical);
        rising->setTextVisible(false);
        rising->setValue(60);
        form->addWidget(rising, 0, 3, row, 1);
        holder->setEnabled(enabled);
        grid->addWidget(holder, 0, column);
    }
    return page;
}

QDialog* ListsPage() {
    QDialog* page = Page("Lists and texts");
    auto* grid = new QGridLayout(page);
    auto* split = new QSplitter(page);
    auto* list = new QListWidget(split);
    for (int i = 0; i < 30; ++i) {
        list->addItem(QStringLiteral("Row %1").arg(i + 1));
    }
    list->setObjectName(QStringLiteral("list"));
    list->setCurrentRow(2);
    auto* tree = new QTreeWidget(split);
    tree->setHeaderLabels({QStringLiteral("Folder"), QStringLiteral("Size")});
    auto* top = new QTreeWidgetItem(tree, {QStringLiteral("Music"), QStringLiteral("3")});
    new QTreeWidgetItem(top, {QStringLiteral("first-light.wav"), QStringLiteral("1.2 MB")});
    auto* ticked = new QTreeWidgetItem(top, {QStringLiteral("slow-tide.wma"), QStringLiteral("0.4 MB")});
    ticked->setCheckState(0, Qt::Checked);
    new QTreeWidgetItem(new QTreeWidgetItem(tree, {QStringLiteral("Closed")}), {QStringLiteral("in")});
    tree->expandItem(top);
    tree->setSortingEnabled(true);
    grid->addWidget(split, 0, 0);
    auto* table = new QTableWidget(6, 4, page);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->setDefaultSectionSize(20);
    for (int i = 0; i < 24; ++i) {
        table->setItem(i / 4, i % 4, new QTableWidgetItem(QStringLiteral("Cell %1").arg(i)));
    }
    table->setCurrentCell(1, 1);
    grid->addWidget(table, 1, 0);
    auto* text = new QTextBrowser(page);
    text->setHtml(QStringLiteral("<h3>Playing</h3><p>Plain text, <b>bold</b> and <a href='x'>a link</a>. "
                                 "The quick brown fox jumps over the lazy dog.</p>"));
    text->setMaximumHeight(90);
    grid->addWidget(text, 2, 0);
    page->resize(460, 430);
    return page;
}

QDialog* TabsPage() {
    QDialog* page = Page("Tabs and groups");
    auto* grid = new QGridLayout(page);
    auto* tabs = new QTabWidget(page);
    for (const char* name : {"General", "Tags", "Encoder"}) {
        auto* leaf = new QWidget(tabs);
        auto* inside = new QGridLayout(leaf);
        auto* group = new QGroupBox(QStringLiteral("Quality"), leaf);
        auto* rows = new QVBoxLayout(group);
        rows->addWidget(new QRadioButton(QStringLiteral("By bit rate"), group));
        rows->addWidget(new QCheckBox(QStringLiteral("Reservoir"), group));
        inside->addWidget(group, 0, 0);
        auto* switched = new QGroupBox(QStringLiteral("Switched"), leaf);
        switched->setCheckable(true);
        auto* more = new QVBoxLayout(switched);
        more->addWidget(new QLabel(QStringLiteral("Label"), switched));
        inside->addWidget(switched, 0, 1);
        tabs->addTab(leaf, QString::fromLatin1(name));
    }
    tabs->setTabEnabled(2, false);
    grid->addWidget(tabs, 0, 0);
    page->resize(360, 200);
    return page;
}

QMenu* MenuPage() {
    auto* menu = new QMenu;
    QAction* start = menu->addAction(QStringLiteral("&Start"));
    start->setShortcut(Qt::CTRL | Qt::Key_P);
    menu->addAction(QStringLiteral("S&elected"));
    menu->addAction(QStringLiteral("&Disabled"))->setEnabled(false);
    menu->addSeparator();
    QAction* check = menu->addAction(QStringLiteral("&Checked"));
    check->setCheckable(true);
    check->setChecked(true);
    auto* group = new QActionGroup(menu);
    QAction* one = group->addAction(QStringLiteral("One of &many"));
    one->setCheckable(true);
    one->setChecked(true);
    menu->addAction(one);
    menu->addAction(menu->style()->standardIcon(QStyle::SP_DirIcon), QStringLiteral("With an &icon"));
    menu->addSeparator();
    menu->addMenu(QStringLiteral("Sort &by..."))->addAction(QStringLiteral("Index"));
    menu->addAction(QStringLiteral("E&xit"))->setShortcut(Qt::ALT | Qt::Key_F4);
    return menu;
}

} // namespace kestrune
