#include "help/help_page.h"

#include <QXmlStreamReader>

namespace kestrune {

namespace {

bool IsHeading(QStringView element) {
    return element == QLatin1String("h1") || element == QLatin1String("h2") || element == QLatin1String("h3");
}

// Elements that stand inside a line; all others part words.
bool IsInline(QStringView element) {
    return element == QLatin1String("a") || element == QLatin1String("b") || element == QLatin1String("i") ||
           element == QLatin1String("em") || element == QLatin1String("strong") ||
           element == QLatin1String("span") || element == QLatin1String("code") ||
           element == QLatin1String("kbd");
}

void TakeAttributes(const QXmlStreamReader& reader, HelpPage& page) {
    const QXmlStreamAttributes attributes = reader.attributes();
    if (reader.name() == QLatin1String("img")) {
        page.pictures.append(attributes.value(QLatin1String("src")).toString());
    }
    if (reader.name() != QLatin1String("a")) {
        return;
    }
    if (attributes.hasAttribute(QLatin1String("href"))) {
        page.links.append(attributes.value(QLatin1String("href")).toString());
    }
    if (attributes.hasAttribute(QLatin1String("name"))) {
        page.anchors.append(attributes.value(QLatin1String("name")).toString());
    }
}

} // namespace

std::optional<HelpPage> ParseHelpPage(const QString& name, const QByteArray& content) {
    HelpPage page;
    page.name = name;
    QXmlStreamReader reader(content);
    bool inTitle = false;
    bool inHeading = false;
    bool inMainHeading = false; // repeats the title
    QString heading;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            TakeAttributes(reader, page);
            inTitle = inTitle || reader.name() == QLatin1String("title");
            if (IsHeading(reader.name())) {
                inHeading = true;
                inMainHeading = reader.name() == QLatin1String("h1");
                heading.clear();
            }
            page.text += IsInline(reader.name()) ? QString() : QStringLiteral(" ");
            break;
        case QXmlStreamReader::Characters:
            if (inTitle) {
                page.title += reader.text();
            } else if (!inMainHeading) {
                page.text += reader.text();
            }
            heading += inHeading ? reader.text().toString() : QString();
            break;
        case QXmlStreamReader::EndElement:
            if (IsHeading(reader.name())) {
                inHeading = false;
                inMainHeading = false;
                page.headings.append(heading.simplified());
            }
            inTitle = inTitle && reader.name() != QLatin1String("title");
            page.text += IsInline(reader.name()) ? QString() : QStringLiteral(" ");
            break;
        default:
            break;
        }
    }
    page.title = page.title.simplified();
    page.text = page.text.simplified();
    if (reader.hasError() || page.title.isEmpty()) {
        return std::nullopt;
    }
    return page;
}

HelpTarget SplitHelpTarget(const QString& target) {
    const qsizetype mark = target.indexOf(u'#');
    return mark < 0 ? HelpTarget{target, {}} : HelpTarget{target.left(mark), target.mid(mark + 1)};
}

} // namespace kestrune
