// Sets title and album of many files by the tag component, one after the other: TITLE FILE... For tags.py.
#include "backends/tags/tag_information.h"

#include <cstdio>

int main(int argc, char** argv) {
    using namespace kestrune;
    if (argc < 3) {
        return 2;
    }
    const auto info = MakeAudioInformation();
    info->SetTagVersion(TagKind::Id3v2);
    for (int at = 2; at < argc; ++at) {
        const QString path = QString::fromLocal8Bit(argv[at]);
        if (info->ReadTagFromFile(path) != Outcome::Ok) {
            std::fprintf(stderr, "cannot read %s\n", argv[at]);
            return 1;
        }
        info->Tag().title = QString::fromLocal8Bit(argv[1]);
        info->Tag().album = QStringLiteral("Album ") + info->Tag().title;
        if (info->SaveTagToFile(path) != Outcome::Ok) {
            std::fprintf(stderr, "cannot save %s\n", argv[at]);
            return 1;
        }
    }
    return 0;
}
