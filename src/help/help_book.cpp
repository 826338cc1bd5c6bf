#include "help/help_book.h"

#include "app/failure_log.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace kestrune {

namespace {

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<HelpTopic> TopicsOf(const QJsonArray& entries) {
    QList<HelpTopic> topics;
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        topics.append({entry.value(QLatin1String("title")).toString(),
                       entry.value(QLatin1String("target")).toString(),
                       TopicsOf(entry.value(QLatin1String("children")).toArray())});
    }
    return topics;
}

QList<HelpKeyword> KeywordsOf(const QJsonArray& entries) {
    QList<HelpKeyword> keywords;
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        keywords.append({entry.value(QLatin1String("keyword")).toString(),
                         entry.value(QLatin1String("target")).toString()});
    }
    std::stable_sort(keywords.begin(), keywords.end(), [](const HelpKeyword& a, const HelpKeyword& b) {
        return a.keyword.compare(b.keyword, Qt::CaseInsensitive) < 0;
    });
    return keywords;
}

} // namespace

Outcome HelpBook::Open(const QString& folder) {
    *this = HelpBook();
    folder_ = folder;
    const QString contentsFile = folder + QStringLiteral("/contents.json");
    if (!QFile::exists(contentsFile)) {
        qCWarning(logHelp) << "no contents in" << folder;
        return Outcome::NotFound;
    }
    QJsonParseError error;
    const QJsonObject book = QJsonDocument::fromJson(ReadAll(contentsFile), &error).object();
    if (error.error != QJsonParseError::NoError) {
        qCWarning(logHelp) << contentsFile << error.errorString() << "at" << error.offset;
        return Outcome::NotDecodable;
    }
    contents_ = TopicsOf(book.value(QLatin1String("contents")).toArray());
    index_ = KeywordsOf(book.value(QLatin1String("index")).toArray());
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.htm")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (auto page = ParseHelpPage(name, ReadAll(folder + u'/' + name))) {
            pages_.append(*std::move(page));
        } else {
            qCWarning(logHelp) << name << "is damaged";
        }
    }
    for (HelpPage& page : pages_) {
        for (const HelpKeyword& entry : index_) {
            if (SplitHelpTarget(entry.target).page == page.name) {
                page.keywords.append(entry.keyword);
            }
        }
    }
    return Outcome::Ok;
}

const HelpPage* HelpBook::FindPage(const QString& name) const {
    const auto page =
        std::find_if(pages_.begin(), pages_.end(), [&](const HelpPage& one) { return one.name == name; });
    return page == pages_.end() ? nullptr : &*page;
}

HelpTarget HelpBook::Resolve(const QString& topic) const {
    HelpTarget target = SplitHelpTarget(topic);
    const HelpPage* page = FindPage(target.page);
    if (page == nullptr) {
        return {helpStartPage, {}};
    }
    if (!page->anchors.contains(target.anchor)) {
        target.anchor.clear();
    }
    return target;
}

} // namespace kestrune
