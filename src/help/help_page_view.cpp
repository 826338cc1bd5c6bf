#include "help/help_page_view.h"

#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QWheelEvent>
#include <algorithm>

namespace kestrune {

namespace {

const QColor glassColour(20, 20, 20);
const QColor textColour(0xD7, 0xDA, 0xF5);
const QColor accentColour(128, 128, 255);
constexpr double markOpacity = 0.38;
constexpr int pageFontPixels = 13;
constexpr int pageMargin = 22;
// Longer lines tire the eye.
constexpr int longestLine = 620;
constexpr int smallestPercent = 70;
constexpr int largestPercent = 250;
constexpr int percentStep = 10;

// Sizes in pixels are made larger with the letters.
QString ScaledStyle(const QString& style, int percent) {
    static const QRegularExpression fontSize(QStringLiteral("font-size: (\\d+)px"));
    QString scaled;
    qsizetype from = 0;
    auto matches = fontSize.globalMatch(style);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        scaled += style.mid(from, match.capturedStart(1) - from);
        scaled += QString::number(match.captured(1).toInt() * percent / 100);
        from = match.capturedEnd(1);
    }
    return scaled + style.mid(from);
}

// What the style sheet of the view cannot do: the ground of a key's name needs room at both sides, and the
// size of a heading follows its level only.
QString FitForView(QString page) {
    page.replace(QLatin1String("<kbd>"), QLatin1String("<kbd>&nbsp;"));
    page.replace(QLatin1String("</kbd>"), QLatin1String("&nbsp;</kbd>"));
    page.replace(QLatin1String("h2>"), QLatin1String("h3>"));
    page.replace(QLatin1String("h1>"), QLatin1String("h2>"));
    return page;
}

} // namespace

HelpPageView::HelpPageView(const HelpBook& book, QWidget* parent) : QTextBrowser(parent), book_(book) {
    setObjectName(QStringLiteral("HelpPage"));
    setAccessibleName(tr("Help page"));
    setOpenLinks(true);
    setOpenExternalLinks(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    QPalette glass = palette();
    glass.setColor(QPalette::Base, glassColour);
    glass.setColor(QPalette::Text, textColour);
    glass.setColor(QPalette::Link, QColor(0xA3, 0xA3, 0xFF));
    QColor selection = accentColour;
    glass.setColor(QPalette::Highlight, selection.darker(150));
    glass.setColor(QPalette::HighlightedText, Qt::white);
    setPalette(glass);
    QFile style(book.Folder() + QStringLiteral("/help.css"));
    if (style.open(QIODevice::ReadOnly)) {
        styleSheet_ = QString::fromUtf8(style.readAll());
    }
    SetLetterSize(letterPercent_);
}

void HelpPageView::ShowTarget(const QString& topic) {
    const HelpTarget target = book_.Resolve(topic);
    QUrl url(target.page);
    if (!target.anchor.isEmpty()) {
        url.setFragment(target.anchor);
    }
    setSource(url);
}

QString HelpPageView::CurrentTarget() const {
    return source().toString();
}

// The one way to another page: links, history and ShowTarget all come through here. What is no page of the
// book, an address of the outside above all, is not followed.
void HelpPageView::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
    const QString page = url.path();
    if (!url.scheme().isEmpty() || !url.host().isEmpty() ||
        (!page.isEmpty() && book_.FindPage(page) == nullptr)) {
        return;
    }
    QTextBrowser::doSetSource(url, type);
    FitMargins();
    ShowMarks();
    if (!url.hasFragment()) {
        verticalScrollBar()->setValue(0);
    }
    emit TargetShown(source().path());
}

QVariant HelpPageView::loadResource(int type, const QUrl& name) {
    const QString path = book_.Folder() + u'/' + name.path().section(u'/', -1);
    if (type == QTextDocument::ImageResource) {
        QSvgRenderer drawing(path);
        const qreal scale = devicePixelRatioF();
        QImage picture(drawing.defaultSize() * scale, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        if (drawing.isValid()) {
            QPainter painter(&picture);
            drawing.render(&painter);
        }
        picture.setDevicePixelRatio(scale);
        return picture;
    }
    QFile file(path);
    if (type != QTextDocument::HtmlResource || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return FitForView(QString::fromUtf8(file.readAll()));
}

void HelpPageView::SetLetterSize(int percent) {
    letterPercent_ = std::clamp(percent, smallestPercent, largestPercent);
    QFont face(QStringLiteral("Inter"));
    face.setPixelSize(pageFontPixels * letterPercent_ / 100);
    document()->setDefaultFont(face);
    document()->setDefaultStyleSheet(ScaledStyle(styleSheet_, letterPercent_));
    if (!source().isEmpty()) {
        const int place = verticalScrollBar()->value();
        reload();
        FitMargins();
        ShowMarks();
        verticalScrollBar()->setValue(place);
    }
}

void HelpPageView::FitMargins() {
    const int line = longestLine * letterPercent_ / 100;
    const int room = viewport()->width() - 2 * pageMargin;
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    frame.setTopMargin(pageMargin);
    frame.setBottomMargin(pageMargin);
    frame.setLeftMargin(pageMargin);
    frame.setRightMargin(pageMargin + std::max(0, room - line));
    document()->rootFrame()->setFrameFormat(frame);
}

void HelpPageView::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    FitMargins();
}

void HelpPageView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    SetLetterSize(letterPercent_ + (event->angleDelta().y() > 0 ? percentStep : -percentStep));
    event->accept();
}

void HelpPageView::MarkWords(const QStringList& words) {
    markedWords_ = words;
    ShowMarks();
}

void HelpPageView::ShowMarks() {
    QList<ExtraSelection> marks;
    QColor colour = accentColour;
    colour.setAlphaF(markOpacity);
    for (const QString& word : markedWords_) {
        const QRegularExpression pattern(
            QStringLiteral("(?<![\\p{L}\\p{N}])") + QRegularExpression::escape(word),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
        for (QTextCursor place = document()->find(pattern, 0); !place.isNull();
             place = document()->find(pattern, place)) {
            ExtraSelection mark;
            mark.cursor = place;
            mark.format.setBackground(colour);
            mark.format.setForeground(QColor(Qt::white));
            marks.append(mark);
        }
    }
    setExtraSelections(marks);
}

bool HelpPageView::Find(const QString& text, bool backward) {
    const QTextDocument::FindFlags direction =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    QTextCursor place = document()->find(text, textCursor(), direction);
    if (place.isNull()) {
        QTextCursor end(document());
        end.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
        place = document()->find(text, end, direction);
    }
    if (place.isNull()) {
        return false;
    }
    setTextCursor(place);
    ensureCursorVisible();
    return true;
}

} // namespace kestrune
