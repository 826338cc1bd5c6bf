#include "help/help_window.h"

#include "help/help_hits.h"
#include "help/help_icons.h"
#include "help/help_page_view.h"
#include "help/help_resources.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeWidgetItemIterator>

namespace kestrune {

namespace {

enum Side { SideContents, SideIndex, SideSearch };
constexpr QSize startSize(720, 520);
constexpr int sideWidth = 232;
constexpr int letterStep = 10;
constexpr int usualLetters = 100;

QLineEdit* TextField(const QString& name, const QString& accessibleName, const QString& hint) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(accessibleName);
    field->setPlaceholderText(hint);
    field->setClearButtonEnabled(true);
    return field;
}

QListWidget* List(const QString& name, const QString& accessibleName) {
    auto* list = new QListWidget;
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    list->setUniformItemSizes(true);
    return list;
}

} // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(tr("Kestrune Help"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setModal(false);
    setSizeGripEnabled(true);
    resize(startSize);
    book_.Open(BuiltInHelpFolder());
    page_ = new HelpPageView(book_);
    MakeSides();
    auto* right = new QWidget;
    auto* rightColumn = new QVBoxLayout(right);
    rightColumn->setContentsMargins(0, 0, 0, 0);
    rightColumn->setSpacing(6);
    rightColumn->addWidget(MakeBar());
    rightColumn->addWidget(page_, 1);
    rightColumn->addWidget(MakeFindBar());
    auto* splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(sides_);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({sideWidth, startSize.width() - sideWidth});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->addWidget(splitter);
    ConnectSides();
    ConnectPage();
    AddShortcuts();
    contents_->setFocus();
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::ShowTopic(const QString& topic) {
    page_->MarkWords({});
    page_->ShowTarget(topic);
    showNormal();
    raise();
    activateWindow();
}

QToolButton* HelpWindow::MakeButton(const QString& name, const QString& icon, const QString& text,
                                    const QString& key) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(HelpIcon(book_.Folder() + u'/' + icon));
    button->setIconSize({16, 16});
    button->setText(text);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(text);
    button->setToolTip(QStringLiteral("%1 (%2)").arg(text, key));
    // Not the button's own shortcut, which shows a pressed button for a while before it acts.
    connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, button, &QToolButton::click);
    return button;
}

QWidget* HelpWindow::MakeBar() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    back_ = MakeButton(QStringLiteral("HelpBack"), QStringLiteral("back.svg"), tr("Back"),
                       QStringLiteral("Alt+Left"));
    forward_ = MakeButton(QStringLiteral("HelpForward"), QStringLiteral("forward.svg"), tr("Forward"),
                          QStringLiteral("Alt+Right"));
    auto* home = MakeButton(QStringLiteral("HelpHome"), QStringLiteral("home.svg"), tr("Home"),
                            QStringLiteral("Alt+Home"));
    auto* find = MakeButton(QStringLiteral("HelpFind"), QStringLiteral("find.svg"), tr("Find in page"),
                            QStringLiteral("Ctrl+F"));
    connect(back_, &QToolButton::clicked, page_, &QTextBrowser::backward);
    connect(forward_, &QToolButton::clicked, page_, &QTextBrowser::forward);
    connect(home, &QToolButton::clicked, page_, [this] { page_->ShowTarget(helpStartPage); });
    connect(find, &QToolButton::clicked, this, &HelpWindow::OpenFind);
    back_->setEnabled(false);
    forward_->setEnabled(false);
    row->addWidget(back_);
    row->addWidget(forward_);
    row->addWidget(home);
    row->addStretch(1);
    row->addWidget(find);
    return bar;
}

QWidget* HelpWindow::MakeFindBar() {
    findBar_ = new QWidget;
    findBar_->setObjectName(QStringLiteral("HelpFindBar"));
    auto* row = new QHBoxLayout(findBar_);
    row->setContentsMargins(0, 0, 0, 0);
    findText_ = TextField(QStringLiteral("HelpFindText"), tr("Find in page"), tr("Find in this page"));
    findNote_ = new QLabel;
    findNote_->setObjectName(QStringLiteral("HelpFindNote"));
    auto* before = MakeButton(QStringLiteral("HelpFindPrevious"), QStringLiteral("up.svg"), tr("Previous"),
                              QStringLiteral("Shift+F3"));
    auto* next = MakeButton(QStringLiteral("HelpFindNext"), QStringLiteral("down.svg"), tr("Next"),
                            QStringLiteral("F3"));
    connect(before, &QToolButton::clicked, this, [this] { FindInPage(true); });
    connect(next, &QToolButton::clicked, this, [this] { FindInPage(false); });
    connect(findText_, &QLineEdit::returnPressed, this, [this] { FindInPage(false); });
    connect(findText_, &QLineEdit::textChanged, this, [this](const QString& text) {
        // While typing, the place found so far grows instead of jumping to the next one.
        QTextCursor place = page_->textCursor();
        place.setPosition(place.selectionStart());
        page_->setTextCursor(place);
        findNote_->clear();
        if (!text.isEmpty()) {
            FindInPage(false);
        }
    });
    row->addWidget(findText_, 1);
    row->addWidget(findNote_);
    row->addWidget(before);
    row->addWidget(next);
    findBar_->hide();
    return findBar_;
}

QWidget* HelpWindow::MakeIndex() {
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(6, 6, 6, 6);
    indexText_ = TextField(QStringLiteral("HelpIndexText"), tr("Word to look up"), tr("Look up a word"));
    index_ = List(QStringLiteral("HelpIndex"), tr("Index"));
    for (const HelpKeyword& entry : book_.Index()) {
        auto* item = new QListWidgetItem(entry.keyword, index_);
        item->setData(HelpTargetRole, entry.target);
    }
    column->addWidget(indexText_);
    column->addWidget(index_, 1);
    return side;
}

QWidget* HelpWindow::MakeSearch() {
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(6, 6, 6, 6);
    searchText_ =
        TextField(QStringLiteral("HelpSearchText"), tr("Words to search for"), tr("Search all pages"));
    searchNote_ = new QLabel(tr("Type one or more words."));
    searchNote_->setObjectName(QStringLiteral("HelpSearchNote"));
    searchNote_->setWordWrap(true);
    hits_ = List(QStringLiteral("HelpHits"), tr("Pages found"));
    hits_->setItemDelegate(new HelpHitDelegate(hits_));
    hits_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(searchText_);
    column->addWidget(searchNote_);
    column->addWidget(hits_, 1);
    return side;
}

void HelpWindow::MakeSides() {
    contents_ = new QTreeWidget;
    contents_->setObjectName(QStringLiteral("HelpContents"));
    contents_->setAccessibleName(tr("Contents"));
    contents_->setHeaderHidden(true);
    contents_->setColumnCount(1);
    contents_->setIndentation(14);
    AddTopics(book_.Contents(), contents_->invisibleRootItem());
    for (int i = 0; i < contents_->topLevelItemCount(); ++i) {
        contents_->topLevelItem(i)->setExpanded(true);
    }
    sides_ = new QTabWidget;
    sides_->setObjectName(QStringLiteral("HelpSides"));
    sides_->setAccessibleName(tr("Ways to a page"));
    sides_->addTab(contents_, tr("Contents"));
    sides_->addTab(MakeIndex(), tr("Index"));
    sides_->addTab(MakeSearch(), tr("Search"));
    for (int side = 0; side < sides_->count(); ++side) {
        sides_->setTabToolTip(side, QStringLiteral("Ctrl+%1").arg(side + 1));
    }
}

void HelpWindow::AddTopics(const QList<HelpTopic>& topics, QTreeWidgetItem* under) {
    for (const HelpTopic& topic : topics) {
        auto* item = new QTreeWidgetItem(under, {topic.title});
        item->setData(0, HelpTargetRole, topic.target);
        if (!topic.children.isEmpty() && under == contents_->invisibleRootItem()) {
            QFont face = contents_->font();
            face.setWeight(QFont::DemiBold);
            item->setFont(0, face);
        }
        AddTopics(topic.children, item);
    }
}

void HelpWindow::ConnectSides() {
    connect(contents_, &QTreeWidget::currentItemChanged, page_, [this](QTreeWidgetItem* item) {
        if (item != nullptr) {
            page_->MarkWords({});
            page_->ShowTarget(item->data(0, HelpTargetRole).toString());
        }
    });
    const auto showItem = [this](const QListWidgetItem* item) {
        page_->MarkWords(item->listWidget() == hits_ ? HelpQueryWords(searchText_->text()) : QStringList());
        page_->ShowTarget(item->data(HelpTargetRole).toString());
    };
    for (QListWidget* list : {index_, hits_}) {
        connect(list, &QListWidget::itemClicked, page_, showItem);
        connect(list, &QListWidget::itemActivated, page_, showItem);
    }
    connect(indexText_, &QLineEdit::textChanged, this, &HelpWindow::FilterIndex);
    connect(searchText_, &QLineEdit::textChanged, this, &HelpWindow::SearchNow);
    const auto showCurrent = [showItem](QListWidget* list) {
        if (const QListWidgetItem* item = list->currentItem()) {
            showItem(item);
        }
    };
    connect(indexText_, &QLineEdit::returnPressed, page_, [this, showCurrent] { showCurrent(index_); });
    connect(searchText_, &QLineEdit::returnPressed, page_, [this, showCurrent] { showCurrent(hits_); });
}

void HelpWindow::ConnectPage() {
    connect(page_, &QTextBrowser::backwardAvailable, back_, &QWidget::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward_, &QWidget::setEnabled);
    connect(page_, &HelpPageView::TargetShown, this, &HelpWindow::PageShown);
}

void HelpWindow::AddShortcuts() {
    const auto on = [this](const QString& key, auto action) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, action);
    };
    on(QStringLiteral("Ctrl+1"), [this] { ShowSide(SideContents); });
    on(QStringLiteral("Ctrl+2"), [this] { ShowSide(SideIndex); });
    on(QStringLiteral("Ctrl+3"), [this] { ShowSide(SideSearch); });
    on(QStringLiteral("F6"), [this] { SwitchSide(); });
    for (const QString& larger : {QStringLiteral("Ctrl++"), QStringLiteral("Ctrl+=")}) {
        on(larger, [this] { page_->SetLetterSize(page_->LetterSize() + letterStep); });
    }
    on(QStringLiteral("Ctrl+-"), [this] { page_->SetLetterSize(page_->LetterSize() - letterStep); });
    on(QStringLiteral("Ctrl+0"), [this] { page_->SetLetterSize(usualLetters); });
}

void HelpWindow::ShowSide(int side) {
    sides_->setCurrentIndex(side);
    if (side == SideContents) {
        contents_->setFocus(Qt::ShortcutFocusReason);
        return;
    }
    QLineEdit* field = side == SideIndex ? indexText_ : searchText_;
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

void HelpWindow::SwitchSide() {
    if (sides_->isAncestorOf(focusWidget())) {
        page_->setFocus(Qt::ShortcutFocusReason);
    } else {
        ShowSide(sides_->currentIndex());
    }
}

// Shows what holds the text at the start of a word, and goes to the first that begins with it.
void HelpWindow::FilterIndex(const QString& text) {
    const QRegularExpression word(QStringLiteral("(^|[^\\p{L}\\p{N}])") +
                                      QRegularExpression::escape(text.trimmed()),
                                  QRegularExpression::CaseInsensitiveOption);
    QListWidgetItem* holds = nullptr;
    QListWidgetItem* begins = nullptr;
    for (int i = 0; i < index_->count(); ++i) {
        QListWidgetItem* item = index_->item(i);
        const bool shown = word.match(item->text()).hasMatch();
        item->setHidden(!shown);
        holds = shown && holds == nullptr ? item : holds;
        if (begins == nullptr && item->text().startsWith(text.trimmed(), Qt::CaseInsensitive)) {
            begins = item;
        }
    }
    QListWidgetItem* best = begins != nullptr ? begins : holds;
    index_->setCurrentItem(text.isEmpty() ? nullptr : best);
    if (best != nullptr) {
        index_->scrollToItem(best);
    }
}

void HelpWindow::SearchNow() {
    const QString query = searchText_->text();
    const QList<HelpHit> hits = book_.Search(query);
    FillHelpHits(*hits_, hits);
    if (HelpQueryWords(query).isEmpty()) {
        searchNote_->setText(tr("Type one or more words."));
    } else if (hits.isEmpty()) {
        searchNote_->setText(tr("No page holds all of these words."));
    } else {
        searchNote_->setText(hits.size() == 1 ? tr("1 page") : tr("%1 pages").arg(hits.size()));
        hits_->setCurrentRow(0);
    }
}

void HelpWindow::OpenFind() {
    findBar_->show();
    findText_->setFocus(Qt::ShortcutFocusReason);
    findText_->selectAll();
}

void HelpWindow::CloseFind() {
    findBar_->hide();
    page_->setFocus(Qt::OtherFocusReason);
}

void HelpWindow::FindInPage(bool backward) {
    if (findText_->text().isEmpty()) {
        OpenFind();
        return;
    }
    findNote_->setText(page_->Find(findText_->text(), backward) ? QString() : tr("Not in this page"));
}

// Shows in the contents where the page belongs, without going there again.
void HelpWindow::PageShown(const QString& page) {
    const QTreeWidgetItem* current = contents_->currentItem();
    if (current != nullptr && SplitHelpTarget(current->data(0, HelpTargetRole).toString()).page == page) {
        return;
    }
    const QSignalBlocker quiet(contents_);
    for (QTreeWidgetItemIterator item(contents_); *item != nullptr; ++item) {
        if ((*item)->data(0, HelpTargetRole).toString() == page) {
            contents_->setCurrentItem(*item);
            contents_->scrollToItem(*item);
            return;
        }
    }
    contents_->setCurrentItem(nullptr);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && findBar_->isVisible()) {
        CloseFind();
        return;
    }
    // Down leads from a field into the list below it.
    if (event->key() == Qt::Key_Down && (indexText_->hasFocus() || searchText_->hasFocus())) {
        (indexText_->hasFocus() ? index_ : hits_)->setFocus(Qt::OtherFocusReason);
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace kestrune
