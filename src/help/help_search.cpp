#include "help/help_search.h"

#include <QRegularExpression>
#include <algorithm>

namespace kestrune {

namespace {

constexpr int headingWeight = 5;
constexpr int titleWeight = 20;
constexpr qsizetype excerptBefore = 40;
constexpr qsizetype excerptLength = 120;

// Where a word begins in a text, from a place on; -1 when it doesn't.
qsizetype FindWord(const QString& text, const QString& word, qsizetype from) {
    for (qsizetype at = text.indexOf(word, from, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + 1, Qt::CaseInsensitive)) {
        if (at == 0 || !text[at - 1].isLetterOrNumber()) {
            return at;
        }
    }
    return -1;
}

int CountWord(const QString& text, const QString& word) {
    int count = 0;
    for (qsizetype at = FindWord(text, word, 0); at >= 0; at = FindWord(text, word, at + word.size())) {
        ++count;
    }
    return count;
}

// 0 when the page lacks the word.
int ScoreOf(const HelpPage& page, const QString& word) {
    int score = CountWord(page.text, word);
    score += FindWord(page.title, word, 0) >= 0 ? titleWeight : 0;
    for (const QString& heading : page.headings + page.keywords) {
        score += FindWord(heading, word, 0) >= 0 ? headingWeight : 0;
    }
    return score;
}

QString ExcerptOf(const QString& text, const QStringList& words) {
    qsizetype first = text.size();
    for (const QString& word : words) {
        const qsizetype at = FindWord(text, word, 0);
        first = at >= 0 ? std::min(first, at) : first;
    }
    first = first == text.size() ? 0 : first;
    qsizetype begin = std::max<qsizetype>(0, first - excerptBefore);
    if (begin > 0) {
        begin = text.indexOf(u' ', begin) + 1;
    }
    qsizetype end = std::min(text.size(), begin + excerptLength);
    if (end < text.size()) {
        end = std::max(text.lastIndexOf(u' ', end), begin);
    }
    return (begin > 0 ? QStringLiteral("... ") : QString()) + text.mid(begin, end - begin) +
           (end < text.size() ? QStringLiteral(" ...") : QString());
}

} // namespace

QStringList HelpQueryWords(const QString& query) {
    static const QRegularExpression word(QStringLiteral("[\\p{L}\\p{N}_][\\p{L}\\p{N}_+.\\-]*"));
    QStringList words;
    auto matches = word.globalMatch(query);
    while (matches.hasNext()) {
        QString found = matches.next().captured().toLower();
        while (found.endsWith(u'.') || found.endsWith(u'-')) {
            found.chop(1);
        }
        words.append(found);
    }
    words.removeDuplicates();
    return words;
}

QList<HelpHit> SearchHelp(const QList<HelpPage>& pages, const QString& query) {
    const QStringList words = HelpQueryWords(query);
    QList<HelpHit> hits;
    if (words.isEmpty()) {
        return hits;
    }
    for (const HelpPage& page : pages) {
        int score = 0;
        const bool all = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            const int found = ScoreOf(page, word);
            score += found;
            return found > 0;
        });
        if (all) {
            hits.append({page.name, page.title, ExcerptOf(page.text, words), score});
        }
    }
    std::sort(hits.begin(), hits.end(), [](const HelpHit& a, const HelpHit& b) {
        return a.score != b.score ? a.score > b.score : a.page < b.page;
    });
    return hits;
}

} // namespace kestrune
