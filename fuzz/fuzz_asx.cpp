#include "list_invariants.h"

// The format of ours carries neither duration nor size, and parts folders by backslashes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kestrune;
    if (size > fuzz::largestInput) {
        return 0;
    }
    const auto [first, second] = fuzz::ReadTwice(fuzz::Input(data, size), ParseAsx, EncodeAsx);
    for (size_t i = 0; i < first.entries.size(); ++i) {
        QString path = first.entries[i].path;
        path.replace(u'/', u'\\');
        fuzz::Holds(path == second.entries[i].path, "the path comes back");
        fuzz::Holds(first.entries[i].title == second.entries[i].title, "the title comes back");
        fuzz::Holds(NativeListPath(path) == path.replace(u'\\', u'/'), "backslashes become separators");
    }
    return 0;
}
