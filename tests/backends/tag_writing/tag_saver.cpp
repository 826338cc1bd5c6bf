// Saves two tags in turn to one file, for ever or as often as told: FILE KIND [TIMES [unprivileged]]. KIND is
// 1 or 2. As "unprivileged", the superuser, who may write everywhere, becomes somebody else first. Ends with
// 3 at the first save that is not Ok.
#include "backends/tags/tag_information.h"

#include <QStringList>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

bool BecomeNobody() {
    constexpr int nobody = 65534;
    return ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
}

} // namespace

int main(int argc, char** argv) {
    using namespace kestrune;
    if (argc < 3) {
        return 2;
    }
    if (argc > 4 && !BecomeNobody()) {
        return 2;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    const auto kind = static_cast<TagKind>(std::atoi(argv[2]));
    const int times = argc > 3 ? std::atoi(argv[3]) : -1;
    const auto info = MakeAudioInformation();
    info->SetTagVersion(kind);
    if (info->ReadTagFromFile(path) != Outcome::Ok) {
        return 2;
    }
    for (int time = 0; time != times; ++time) {
        info->Tag().title =
            QStringLiteral("Title %1")
                .arg(time % 2 == 0 ? QStringLiteral("odd") : QStringLiteral("even").repeated(400));
        info->Tag().comment = info->Tag().title;
        if (info->SaveTagToFile(path) != Outcome::Ok) {
            return 3;
        }
        if (time == 0) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
    return 0;
}
