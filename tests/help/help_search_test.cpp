// Taking a help page apart, and searching pages by words.
#include "help/help_search.h"
#include "support/rule_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune::rules {
namespace {

HelpPage Page(const QString& name, const QString& title, const QString& text,
              const QStringList& headings = {}) {
    HelpPage page;
    page.name = name;
    page.title = title;
    page.text = text;
    page.headings = headings;
    return page;
}

std::vector<std::string> Names(const QList<HelpHit>& hits) {
    std::vector<std::string> names;
    for (const HelpHit& hit : hits) {
        names.push_back(Utf8(hit.page));
    }
    return names;
}

QStringList Words(const char* query) {
    return HelpQueryWords(QString::fromUtf8(query));
}

TEST(HelpPageTest, PartsTextHeadingsPlacesLinksAndPictures) {
    const auto page =
        ParseHelpPage(QStringLiteral("a.htm"),
                      "<html><head><title>One &amp; two</title></head><body>\n<h1>One &amp; two</h1>"
                      "<h2><a name=\"x\">Second <b>part</b></a></h2><p>Text<b>ure</b></p><p>ends.</p>"
                      "<img src=\"p.svg\" /><a href=\"b.htm#y\">on</a></body></html>");
    ASSERT_TRUE(page.has_value());
    EXPECT_EQ(Utf8(page->title), "One & two");
    EXPECT_EQ(Utf8(page->text), "Second part Texture ends. on");
    EXPECT_EQ(page->headings, (QStringList{QStringLiteral("One & two"), QStringLiteral("Second part")}));
    EXPECT_EQ(page->anchors, QStringList{QStringLiteral("x")});
    EXPECT_EQ(page->links, QStringList{QStringLiteral("b.htm#y")});
    EXPECT_EQ(page->pictures, QStringList{QStringLiteral("p.svg")});
}

TEST(HelpPageTest, RefusesWhatIsNotWellFormed) {
    for (const char* content : {"", "<html>", "<html><head><title>T</title></head><body><p></body></html>",
                                "<html><head><title> </title></head></html>", "plain", "\xff\xfe"}) {
        EXPECT_FALSE(ParseHelpPage(QStringLiteral("a.htm"), content).has_value()) << content;
    }
}

TEST(HelpPageTest, SplitsATargetAtItsMark) {
    EXPECT_EQ(SplitHelpTarget(QStringLiteral("a.htm#b")),
              (HelpTarget{QStringLiteral("a.htm"), QStringLiteral("b")}));
    EXPECT_EQ(SplitHelpTarget(QStringLiteral("a.htm")), (HelpTarget{QStringLiteral("a.htm"), {}}));
    EXPECT_EQ(SplitHelpTarget(QStringLiteral("#b")), (HelpTarget{QString(), QStringLiteral("b")}));
}

TEST(HelpQueryTest, WordsAreLowerCaseAndEachComesOnce) {
    EXPECT_EQ(Words("Play  PLAY list"), (QStringList{QStringLiteral("play"), QStringLiteral("list")}));
}

TEST(HelpQueryTest, PointsAndHyphensStayInsideAWordOnly) {
    EXPECT_EQ(Words("Default.ksl, 44.1 a-law. -x-"),
              (QStringList{QStringLiteral("default.ksl"), QStringLiteral("44.1"), QStringLiteral("a-law"),
                           QStringLiteral("x")}));
}

TEST(HelpQueryTest, SignsAloneAreNoWords) {
    EXPECT_TRUE(Words("").isEmpty());
    EXPECT_TRUE(Words(" ... \"#\" ?").isEmpty());
}

TEST(HelpSearchTest, FindsTheStartOfWordsInAnyCaseButNotTheirMiddle) {
    const QList<HelpPage> pages = {
        Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("the PLAYLIST")),
        Page(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("it displays"))};
    EXPECT_THAT(Names(SearchHelp(pages, QStringLiteral("play"))), testing::ElementsAre("a"));
}

TEST(HelpSearchTest, APageMustHoldEveryWord) {
    const QList<HelpPage> pages = {
        Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("red green")),
        Page(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("red"))};
    EXPECT_THAT(Names(SearchHelp(pages, QStringLiteral("red green"))), testing::ElementsAre("a"));
    EXPECT_THAT(Names(SearchHelp(pages, QStringLiteral("red"))), testing::ElementsAre("a", "b"));
    EXPECT_TRUE(SearchHelp(pages, QStringLiteral("red blue")).isEmpty());
}

TEST(HelpSearchTest, ATitleGoesBeforeAHeadingAndAHeadingBeforeText) {
    const QList<HelpPage> pages = {
        Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("red red red")),
        Page(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("red"), {QStringLiteral("Red")}),
        Page(QStringLiteral("c"), QStringLiteral("Red"), QStringLiteral("x"))};
    EXPECT_THAT(Names(SearchHelp(pages, QStringLiteral("red"))), testing::ElementsAre("c", "b", "a"));
}

TEST(HelpSearchTest, AWordOfTheIndexFindsAPageThatLacksIt) {
    HelpPage page = Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("jump to a place"));
    page.keywords = {QStringLiteral("seeking")};
    const QList<HelpHit> hits = SearchHelp({page}, QStringLiteral("seek"));
    ASSERT_EQ(hits.size(), 1);
    EXPECT_EQ(hits[0].score, 5);
    EXPECT_EQ(Utf8(hits[0].excerpt), "jump to a place");
}

TEST(HelpSearchTest, MorePlacesGoFirst) {
    const QList<HelpPage> pages = {
        Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("red")),
        Page(QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("red, red"))};
    const QList<HelpHit> hits = SearchHelp(pages, QStringLiteral("red"));
    EXPECT_THAT(Names(hits), testing::ElementsAre("b", "a"));
    EXPECT_EQ(hits[0].score, 2);
    EXPECT_EQ(hits[1].score, 1);
}

TEST(HelpSearchTest, AnEmptyQueryFindsNothing) {
    const QList<HelpPage> pages = {Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("red"))};
    EXPECT_TRUE(SearchHelp(pages, QString()).isEmpty());
    EXPECT_TRUE(SearchHelp(pages, QStringLiteral(" . ")).isEmpty());
}

TEST(HelpSearchTest, AShortTextIsItsOwnExcerpt) {
    const QList<HelpPage> pages = {
        Page(QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("one red car"))};
    EXPECT_EQ(Utf8(SearchHelp(pages, QStringLiteral("red")).first().excerpt), "one red car");
}

TEST(HelpSearchTest, ALongTextIsCutBetweenWordsAroundTheFirstPlace) {
    const QString filler = QStringLiteral("lorem ipsum dolor ").repeated(20);
    const QString text = filler + QStringLiteral("needle ") + filler.trimmed();
    const QList<HelpPage> pages = {Page(QStringLiteral("a"), QStringLiteral("A"), text)};
    const QString excerpt = SearchHelp(pages, QStringLiteral("needle")).first().excerpt;
    EXPECT_TRUE(excerpt.startsWith(QLatin1String("... "))) << Utf8(excerpt);
    EXPECT_TRUE(excerpt.endsWith(QLatin1String(" ..."))) << Utf8(excerpt);
    EXPECT_TRUE(excerpt.contains(QLatin1String(" needle "))) << Utf8(excerpt);
    EXPECT_LE(excerpt.size(), 130);
    for (const QString& word : excerpt.mid(4, excerpt.size() - 8).split(u' ')) {
        EXPECT_TRUE((filler + QStringLiteral(" needle")).split(u' ').contains(word)) << Utf8(word);
    }
}

TEST(HelpSearchTest, ATextOfOneEndlessWordIsCutWithoutHarm) {
    const QString text = QString(500, u'x');
    const QList<HelpPage> pages = {Page(QStringLiteral("a"), QStringLiteral("Red"), text)};
    EXPECT_LE(SearchHelp(pages, QStringLiteral("red")).first().excerpt.size(), 130);
}

} // namespace
} // namespace kestrune::rules
