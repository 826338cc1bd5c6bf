// The pages that come with the program, and how the book finds them.
#include "help/help_book.h"
#include "help/help_resources.h"
#include "support/rule_support.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace kestrune::rules {
namespace {

class BuiltInHelp : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(book.Open(BuiltInHelpFolder()), Outcome::Ok); }

    bool Exists(const HelpTarget& target) const {
        const HelpPage* page = book.FindPage(target.page);
        return page != nullptr && (target.anchor.isEmpty() || page->anchors.contains(target.anchor));
    }
    QStringList TargetsBelow(const QList<HelpTopic>& topics) const {
        QStringList targets;
        for (const HelpTopic& topic : topics) {
            targets.append(topic.target);
            targets.append(TargetsBelow(topic.children));
        }
        return targets;
    }
    QStringList PagesFound(const QString& query) const {
        QStringList pages;
        for (const HelpHit& hit : book.Search(query)) {
            pages.append(hit.page);
        }
        return pages;
    }
    QByteArray Source(const QString& name) const {
        QFile file(book.Folder() + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << Utf8(name);
        return file.readAll();
    }

    HelpBook book;
};

TEST_F(BuiltInHelp, EachPageOfTheFolderIsRead) {
    const QStringList names = QDir(book.Folder()).entryList({QStringLiteral("*.htm")}, QDir::Files);
    EXPECT_GE(names.size(), 20);
    for (const QString& name : names) {
        EXPECT_NE(book.FindPage(name), nullptr) << Utf8(name);
    }
}

TEST_F(BuiltInHelp, HasTheTwoPagesThatTheProgramAsksFor) {
    EXPECT_NE(book.FindPage(QStringLiteral("overview.htm")), nullptr);
    EXPECT_NE(book.FindPage(QStringLiteral("whatit.htm")), nullptr);
}

TEST_F(BuiltInHelp, EachLinkLeadsToAPageAndAPlaceOfTheHelp) {
    int links = 0;
    for (const HelpPage& page : book.Pages()) {
        for (const QString& link : page.links) {
            HelpTarget target = SplitHelpTarget(link);
            if (target.page.isEmpty()) {
                target.page = page.name;
            }
            EXPECT_TRUE(Exists(target)) << Utf8(page.name) << " -> " << Utf8(link);
            ++links;
        }
    }
    EXPECT_GT(links, 50);
}

TEST_F(BuiltInHelp, EachPictureExists) {
    int pictures = 0;
    for (const HelpPage& page : book.Pages()) {
        for (const QString& picture : page.pictures) {
            EXPECT_TRUE(QFile::exists(book.Folder() + u'/' + picture)) << Utf8(picture);
            ++pictures;
        }
    }
    EXPECT_GE(pictures, 1);
}

TEST_F(BuiltInHelp, NothingRefersToTheOutside) {
    static const QRegularExpression outside(
        QStringLiteral("https?:|ftp:|mailto:|file:|www\\.|src=\"/|href=\"/|<script|<iframe|url\\("),
        QRegularExpression::CaseInsensitiveOption);
    for (const HelpPage& page : book.Pages()) {
        const QString source = QString::fromUtf8(Source(page.name));
        EXPECT_FALSE(outside.match(source).hasMatch()) << Utf8(page.name);
    }
}

TEST_F(BuiltInHelp, EachPageIsReachedFromTheContentsByItsTitle) {
    const QStringList targets = TargetsBelow(book.Contents());
    for (const HelpPage& page : book.Pages()) {
        EXPECT_EQ(targets.count(page.name), 1) << Utf8(page.name);
    }
    for (const QString& target : targets) {
        EXPECT_TRUE(Exists(SplitHelpTarget(target))) << Utf8(target);
    }
}

TEST_F(BuiltInHelp, EachPageIsReachedFromTheStartPageByLinks) {
    QSet<QString> reached = {helpStartPage};
    QStringList open = {helpStartPage};
    while (!open.isEmpty()) {
        const HelpPage* page = book.FindPage(open.takeFirst());
        ASSERT_NE(page, nullptr);
        for (const QString& link : page->links) {
            const QString next = SplitHelpTarget(link).page;
            if (!next.isEmpty() && !reached.contains(next)) {
                reached.insert(next);
                open.append(next);
            }
        }
    }
    EXPECT_EQ(reached.size(), book.Pages().size());
}

TEST_F(BuiltInHelp, EachWordOfTheIndexLeadsSomewhere) {
    EXPECT_GT(book.Index().size(), 80);
    QSet<QString> keywords;
    for (const HelpKeyword& entry : book.Index()) {
        EXPECT_TRUE(Exists(SplitHelpTarget(entry.target))) << Utf8(entry.keyword) << Utf8(entry.target);
        EXPECT_FALSE(keywords.contains(entry.keyword)) << Utf8(entry.keyword);
        keywords.insert(entry.keyword);
    }
}

TEST_F(BuiltInHelp, TheIndexStandsInTheOrderOfLetters) {
    for (qsizetype i = 1; i < book.Index().size(); ++i) {
        EXPECT_LE(book.Index()[i - 1].keyword.compare(book.Index()[i].keyword, Qt::CaseInsensitive), 0)
            << Utf8(book.Index()[i].keyword);
    }
}

TEST_F(BuiltInHelp, PagesAreValidUtf8WithOneMainHeadingAndPlacesOfDifferentNames) {
    for (const HelpPage& page : book.Pages()) {
        const QByteArray source = Source(page.name);
        EXPECT_EQ(QString::fromUtf8(source).toUtf8(), source) << Utf8(page.name);
        EXPECT_FALSE(QString::fromUtf8(source).contains(QChar::ReplacementCharacter)) << Utf8(page.name);
        EXPECT_EQ(source.count("<h1>"), 1) << Utf8(page.name);
        EXPECT_EQ(QSet<QString>(page.anchors.begin(), page.anchors.end()).size(), page.anchors.size())
            << Utf8(page.name);
        EXPECT_GT(page.text.size(), 200) << Utf8(page.name);
    }
}

TEST_F(BuiltInHelp, TitleAndMainHeadingAgreeAndDifferFromPageToPage) {
    QSet<QString> titles;
    for (const HelpPage& page : book.Pages()) {
        ASSERT_FALSE(page.headings.isEmpty()) << Utf8(page.name);
        EXPECT_EQ(page.headings.first(), page.title) << Utf8(page.name);
        titles.insert(page.title);
    }
    EXPECT_EQ(titles.size(), book.Pages().size());
}

TEST_F(BuiltInHelp, NoFileOfTheFolderIsLeftUnread) {
    const QStringList files = QDir(book.Folder()).entryList(QDir::Files);
    for (const QString& file : files) {
        EXPECT_TRUE(file.endsWith(QLatin1String(".htm")) || file.endsWith(QLatin1String(".svg")) ||
                    file == QLatin1String("contents.json") || file == QLatin1String("help.css"))
            << Utf8(file);
    }
}

TEST_F(BuiltInHelp, ATopicIsFoundByPageAndPlace) {
    EXPECT_EQ(book.Resolve(QStringLiteral("volume.htm")), (HelpTarget{QStringLiteral("volume.htm"), {}}));
    EXPECT_EQ(book.Resolve(QStringLiteral("position.htm#seek")),
              (HelpTarget{QStringLiteral("position.htm"), QStringLiteral("seek")}));
}

TEST_F(BuiltInHelp, AnUnknownTopicLeadsToTheStartPageAndAnUnknownPlaceToTheTop) {
    const HelpTarget start{QStringLiteral("overview.htm"), {}};
    EXPECT_EQ(book.Resolve(QStringLiteral("no-such-page.htm")), start);
    EXPECT_EQ(book.Resolve(QString()), start);
    EXPECT_EQ(book.Resolve(QStringLiteral("#seek")), start);
    EXPECT_EQ(book.Resolve(QStringLiteral("http://example.org/volume.htm")), start);
    EXPECT_EQ(book.Resolve(QStringLiteral("../help/volume.htm")), start);
    EXPECT_EQ(book.Resolve(QStringLiteral("volume.htm#nowhere")),
              (HelpTarget{QStringLiteral("volume.htm"), {}}));
}

TEST_F(BuiltInHelp, ASearchForASubjectFindsItsPageFirst) {
    const std::vector<std::pair<QString, QString>> subjects = {
        {QStringLiteral("volume"), QStringLiteral("volume.htm")},
        {QStringLiteral("SHUFFLE"), QStringLiteral("modes.htm")},
        {QStringLiteral("equalizer"), QStringLiteral("equalizer.htm")},
        {QStringLiteral("m3u"), QStringLiteral("playlistfiles.htm")},
        {QStringLiteral("sort"), QStringLiteral("sorting.htm")},
        {QStringLiteral("KESTRUNE_HOME"), QStringLiteral("files.htm")},
        {QStringLiteral("media keys"), QStringLiteral("mediakeys.htm")},
        {QStringLiteral("seek"), QStringLiteral("position.htm")},
        {QStringLiteral("random"), QStringLiteral("modes.htm")},
    };
    for (const auto& [query, page] : subjects) {
        const QStringList found = PagesFound(query);
        ASSERT_FALSE(found.isEmpty()) << Utf8(query);
        EXPECT_EQ(Utf8(found.first()), Utf8(page)) << Utf8(query);
    }
}

TEST(HelpBook, AFolderWithoutContentsIsNotFound) {
    const Folder folder;
    HelpBook book;
    EXPECT_EQ(book.Open(folder.Path()), Outcome::NotFound);
    EXPECT_TRUE(book.Pages().isEmpty());
}

TEST(HelpBook, DamagedContentsAreRefused) {
    const Folder folder;
    folder.Write(QStringLiteral("contents.json"), "{ \"contents\": [");
    HelpBook book;
    EXPECT_EQ(book.Open(folder.Path()), Outcome::NotDecodable);
}

TEST(HelpBook, ADamagedPageIsLeftOutAndTheOthersStay) {
    const Folder folder;
    folder.Write(QStringLiteral("contents.json"), "{}");
    folder.Write(QStringLiteral("good.htm"), "<html><head><title>Good</title></head></html>");
    folder.Write(QStringLiteral("cut.htm"), "<html><head><title>Cut</title>");
    folder.Write(QStringLiteral("untitled.htm"), "<html><body>x</body></html>");
    HelpBook book;
    EXPECT_EQ(book.Open(folder.Path()), Outcome::Ok);
    ASSERT_EQ(book.Pages().size(), 1);
    EXPECT_EQ(Utf8(book.Pages().first().title), "Good");
}

TEST(HelpBook, OpeningAgainForgetsTheFormerBook) {
    const Folder folder;
    HelpBook book;
    ASSERT_EQ(book.Open(BuiltInHelpFolder()), Outcome::Ok);
    EXPECT_EQ(book.Open(folder.Path()), Outcome::NotFound);
    EXPECT_TRUE(book.Index().isEmpty());
    EXPECT_TRUE(book.Contents().isEmpty());
}

} // namespace
} // namespace kestrune::rules
