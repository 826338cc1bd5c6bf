// A translator that puts marks round all that it is asked for: a text without marks has gone past it.
#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace kestrune {

constexpr QChar openingMark(u'\u00AB');
constexpr QChar closingMark(u'\u00BB');

class MarkingTranslator : public QTranslator {
public:
    QString translate(const char* /*context*/, const char* sourceText, const char* /*disambiguation*/,
                      int /*n*/) const override {
        return openingMark + QString::fromUtf8(sourceText) + closingMark;
    }
    bool isEmpty() const override { return false; }
};

// To be derived from, before a fixture makes its windows and rules.
class Marked {
protected:
    Marked() { QCoreApplication::installTranslator(&marks_); }
    ~Marked() { QCoreApplication::removeTranslator(&marks_); }

private:
    MarkingTranslator marks_;
};

} // namespace kestrune
