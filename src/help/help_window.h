// The help window: contents, index and search at the left, the page at the right.
#pragma once

#include "help/help_book.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>

namespace kestrune {

class HelpPageView;

// Object "HelpWindow". Made once and shown as often as it is asked for; never modal. Window thread.
class HelpWindow : public QDialog {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent = nullptr);
    ~HelpWindow() override;

    // Brings the window to the front with the page of a topic, "page.htm" or "page.htm#place". An unknown
    // topic shows the start page.
    void ShowTopic(const QString& topic);

    const HelpBook& Book() const { return book_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeBar();
    QWidget* MakeFindBar();
    QWidget* MakeIndex();
    QWidget* MakeSearch();
    void MakeSides();
    QToolButton* MakeButton(const QString& name, const QString& icon, const QString& text,
                            const QString& key);
    void AddTopics(const QList<HelpTopic>& topics, QTreeWidgetItem* under);
    void AddShortcuts();
    void ConnectSides();
    void ConnectPage();
    void ShowSide(int side);
    void SwitchSide();
    void FilterIndex(const QString& text);
    void SearchNow();
    void OpenFind();
    void CloseFind();
    void FindInPage(bool backward);
    void PageShown(const QString& page);

    HelpBook book_;
    HelpPageView* page_ = nullptr;
    QTabWidget* sides_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QLineEdit* indexText_ = nullptr;
    QListWidget* index_ = nullptr;
    QLineEdit* searchText_ = nullptr;
    QListWidget* hits_ = nullptr;
    QLabel* searchNote_ = nullptr;
    QToolButton* back_ = nullptr;
    QToolButton* forward_ = nullptr;
    QWidget* findBar_ = nullptr;
    QLineEdit* findText_ = nullptr;
    QLabel* findNote_ = nullptr;
};

} // namespace kestrune
