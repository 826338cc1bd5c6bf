#include "convert/input_types.h"

namespace kestrune {

namespace {

struct InputType {
    const char* caption;
    bool tickedAtStart;
};

constexpr std::array<InputType, inputTypeCount> types = {{{"WMA", true},
                                                          {"WAV", true},
                                                          {"AVI", false},
                                                          {"OGG", true},
                                                          {"MP3", true},
                                                          {"MP2", true},
                                                          {"MP1", true},
                                                          {"MPEG", true},
                                                          {"MPC", true},
                                                          {"MP+", true},
                                                          {"G.721", true}}};
// Its caption has a point of its own, so that its ending cannot be made of it.
constexpr int g721Index = 10;

bool IsIndex(int index) {
    return index >= 0 && index < inputTypeCount;
}

} // namespace

InputTypes::InputTypes() {
    for (size_t i = 0; i < types.size(); ++i) {
        ticked_[i] = types[i].tickedAtStart;
    }
}

QString InputTypes::Caption(int index) {
    return IsIndex(index) ? QString::fromLatin1(types[static_cast<size_t>(index)].caption) : QString();
}

QString InputTypes::Extension(int index) {
    if (!IsIndex(index)) {
        return {};
    }
    return index == g721Index ? QStringLiteral(".g721") : u'.' + Caption(index);
}

bool InputTypes::Matches(int index, const QString& fileName) {
    return IsIndex(index) && fileName.endsWith(Extension(index), Qt::CaseInsensitive);
}

bool InputTypes::IsTicked(int index) const {
    return IsIndex(index) && ticked_[static_cast<size_t>(index)];
}

void InputTypes::SetTicked(int index, bool ticked) {
    if (IsIndex(index)) {
        ticked_[static_cast<size_t>(index)] = ticked;
    }
}

int InputTypes::RowsFor(const QString& fileName) const {
    int rows = 0;
    for (int i = 0; i < inputTypeCount; ++i) {
        rows += static_cast<int>(IsTicked(i) && Matches(i, fileName));
    }
    return rows;
}

} // namespace kestrune
