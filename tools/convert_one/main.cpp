// A console program over the audio file component, for measurements and for trying a format.
#include "conversion.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

QString Description() {
    return QStringLiteral("Converts IN to one or more outputs, as the converter's run does.\n"
                          "Figures of a FORMAT may be left out from the right. Formats:\n  ") +
           kestrune::FormatHelp().join(QStringLiteral("\n  "));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(Description());
    parser.addHelpOption();
    const QCommandLineOption all(QStringLiteral("all"),
                                 QStringLiteral("One output of every kind; OUT is a folder."));
    const QCommandLineOption plain(QStringLiteral("plain"),
                                   QStringLiteral("Without the hint that whole files are converted."));
    const QCommandLineOption unexpected(QStringLiteral("unexpected"),
                                        QStringLiteral("Without telling the outputs in advance."));
    const QCommandLineOption timed(QStringLiteral("time"), QStringLiteral("Print seconds for each output."));
    parser.addOptions({all, plain, unexpected, timed});
    parser.addPositionalArgument(QStringLiteral("IN"), QStringLiteral("File to read."));
    parser.addPositionalArgument(QStringLiteral("OUT FORMAT"), QStringLiteral("Files to write."),
                                 QStringLiteral("OUT FORMAT [OUT FORMAT...]"));
    parser.process(application);

    const QStringList words = parser.positionalArguments();
    std::vector<kestrune::OutputChoice> outputs;
    if (parser.isSet(all) && words.size() == 2) {
        outputs = kestrune::EveryKind(words[0], words[1]);
    } else if (!parser.isSet(all) && words.size() >= 3 && words.size() % 2 == 1) {
        for (qsizetype at = 1; at + 1 < words.size(); at += 2) {
            outputs.push_back({words[at], words[at + 1]});
        }
    } else {
        QTextStream(stderr) << parser.helpText();
        return 2;
    }
    const bool whole = !parser.isSet(plain);
    const bool expect = whole && !parser.isSet(unexpected);
    return kestrune::Convert(words[0], outputs, {whole, expect, parser.isSet(timed)}) == 0 ? 0 : 1;
}
