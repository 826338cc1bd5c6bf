// The page of the help window: shows pages of the book and follows links between them, to nowhere else.
#pragma once

#include "help/help_book.h"

#include <QTextBrowser>

namespace kestrune {

// Object "HelpPage". Window thread. The book must outlive the view.
class HelpPageView : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpPageView(const HelpBook& book, QWidget* parent = nullptr);

    // An unknown page shows the start page. Adds to the history.
    void ShowTarget(const QString& topic);
    // The page and place last shown, "page.htm" or "page.htm#place".
    QString CurrentTarget() const;

    // Marks each place of the words in the page; no words take the marks off.
    void MarkWords(const QStringList& words);
    // Selects the next place of the text behind the cursor, or before it, and goes on at the other end of the
    // page. False when the page does not hold it.
    bool Find(const QString& text, bool backward);

    // In percent of the usual size, kept between 70 and 250.
    int LetterSize() const { return letterPercent_; }
    void SetLetterSize(int percent);

    QVariant loadResource(int type, const QUrl& name) override;

signals:
    void TargetShown(const QString& page);

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void FitMargins();
    void ShowMarks();

    const HelpBook& book_;
    QString styleSheet_;
    QStringList markedWords_;
    int letterPercent_ = 100;
};

} // namespace kestrune
