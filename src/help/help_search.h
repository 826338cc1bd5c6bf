// Full-text search through the help.
#pragma once

#include "help/help_page.h"

#include <QList>

namespace kestrune {

struct HelpHit {
    QString page;    // file name
    QString title;   // of the page
    QString excerpt; // some words around the first place found, with "..." where the text goes on
    int score = 0;
};

// The words of a query, in lower case, each once. A word is a run of letters, digits, "+", "_" and points or
// hyphens between them, so that "m3u", "44.1" and "Default.ksl" are words.
QStringList HelpQueryWords(const QString& query);

// Pages that hold every word of the query, in themselves or in the index; a word is found at the start of a
// word of the page, in any case. The best come first: each place in the text counts 1, each heading that
// holds the word 5, a title that holds it 20; the page's name decides between equals. An empty query finds
// nothing.
QList<HelpHit> SearchHelp(const QList<HelpPage>& pages, const QString& query);

} // namespace kestrune
