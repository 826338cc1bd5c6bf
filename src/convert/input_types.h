// Which files the job list takes: eleven endings, each with a tick of its own.
#pragma once

#include <QString>
#include <array>

namespace kestrune {

inline constexpr int inputTypeCount = 11;

// Window thread. Indices 0 to 10, as those of Checkin; any other index matches nothing and is passed over.
class InputTypes {
public:
    // Every tick as the window starts with it: all but AVI.
    InputTypes();

    // The words beside the box, "WMA" to "G.721".
    static QString Caption(int index);
    // The ending with its dot, in the letters of the table; Matches takes no notice of them.
    static QString Extension(int index);
    // True when the right end of the name is the ending, whatever stands before it.
    static bool Matches(int index, const QString& fileName);

    bool IsTicked(int index) const;
    void SetTicked(int index, bool ticked);
    // How many rows a file of this name gets: one for each ticked ending that it has.
    int RowsFor(const QString& fileName) const;

private:
    std::array<bool, inputTypeCount> ticked_{};
};

} // namespace kestrune
