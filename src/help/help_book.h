// The help as a book: a tree of contents, an index, and pages that are found by name or by their words.
#pragma once

#include "components/outcome.h"
#include "help/help_page.h"
#include "help/help_search.h"

#include <QList>
#include <QString>

namespace kestrune {

inline const QString helpStartPage = QStringLiteral("overview.htm");

struct HelpTopic {
    QString title;
    QString target; // "page.htm" or "page.htm#place"
    QList<HelpTopic> children;
};

struct HelpKeyword {
    QString keyword;
    QString target;
};

// A folder with pages (*.htm) and "contents.json":
//   { "contents": [ { "title": ..., "target": ..., "children": [ ... ] }, ... ],
//     "index": [ { "keyword": ..., "target": ... }, ... ] }
class HelpBook {
public:
    // Reads the whole folder, which may be one of the program's resources. NotFound without contents.json,
    // NotDecodable when it is damaged. A page that cannot be read is left out; what is wrong is logged to
    // kestrune.help.
    Outcome Open(const QString& folder);

    const QString& Folder() const { return folder_; }
    const QList<HelpTopic>& Contents() const { return contents_; }
    const QList<HelpKeyword>& Index() const { return index_; } // sorted by keyword, letters' case aside
    const QList<HelpPage>& Pages() const { return pages_; }    // sorted by name

    // Null when there is no page of that name.
    const HelpPage* FindPage(const QString& name) const;

    // Where a topic leads. An unknown page leads to the start page, an unknown place to the top of its page.
    HelpTarget Resolve(const QString& topic) const;

    QList<HelpHit> Search(const QString& query) const { return SearchHelp(pages_, query); }

private:
    QString folder_;
    QList<HelpTopic> contents_;
    QList<HelpKeyword> index_;
    QList<HelpPage> pages_;
};

} // namespace kestrune
