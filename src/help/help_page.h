// One page of the help, taken apart: its words for searching, its places and its links for checking.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace kestrune {

struct HelpPage {
    QString name;  // file name, "volume.htm"
    QString title; // content of <title>
    QString text;  // what a reader sees below the main heading; blanks joined, elements parted by one blank
    QStringList headings; // h1 to h3, in the order of the page
    QStringList anchors;  // names of places in the page
    QStringList links;    // href of each <a>, as written
    QStringList pictures; // src of each <img>, as written
    QStringList keywords; // entries of the index that lead here; the book knows them, the page does not
};

// Pages are XHTML in UTF-8. Nothing when the bytes are not well formed or hold no title.
std::optional<HelpPage> ParseHelpPage(const QString& name, const QByteArray& content);

// A link or topic "page.htm#place" in its two halves; either may be empty.
struct HelpTarget {
    QString page;
    QString anchor;
    bool operator==(const HelpTarget&) const = default;
};
HelpTarget SplitHelpTarget(const QString& target);

} // namespace kestrune
