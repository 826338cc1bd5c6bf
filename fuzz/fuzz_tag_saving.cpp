// Files of any bytes: read, saved with new fields, read and saved again. The first byte says which tag.
#include "fuzz_support.h"

#include "backends/tags/tag_information.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace kestrune;

// A folder in memory that goes with the process.
QString FilePath() {
    static const QTemporaryDir folder(QDir(QStringLiteral("/dev/shm")).exists()
                                          ? QStringLiteral("/dev/shm/kestrune-fuzz-XXXXXX")
                                          : QDir::tempPath() + QStringLiteral("/kestrune-fuzz-XXXXXX"));
    return folder.filePath(QStringLiteral("a.mp3"));
}

void Write(const QByteArray& bytes) {
    QFile file(FilePath());
    fuzz::Holds(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the file is written");
}

QByteArray Content() {
    QFile file(FilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void SetFields(TagFields& fields, int round) {
    fields.title = QStringLiteral("Title %1").arg(round);
    fields.artist = QString::fromUtf8("Ωδή");
    fields.comment = QStringLiteral("comment").repeated(round + 1);
    fields.genre = static_cast<qint16>(round);
    fields.year = 1990 + round;
    fields.track = 5;
    fields.url = QStringLiteral("http://example.org/");
}

// The sound of a bare MPEG stream stands behind a tag and in front of the 128 bytes of another.
void CheckSound(const QByteArray& before, const QByteArray& after) {
    if (before.startsWith("\xFF\xFB")) {
        const QByteArray sound = before.left(before.size() - 128);
        fuzz::Holds(after.contains(sound), "the sound is still there");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > fuzz::largestInput) {
        return 0;
    }
    const QByteArray bytes = fuzz::Input(data + 1, size - 1);
    Write(bytes);
    const auto info = MakeAudioInformation();
    info->SetTagVersion((data[0] & 1U) != 0 ? TagKind::Id3v2 : TagKind::Id3v1);
    for (int round = 0; round < 2; ++round) {
        const QByteArray before = Content();
        if (info->ReadTagFromFile(FilePath()) != Outcome::Ok) {
            return 0;
        }
        SetFields(info->Tag(), round);
        info->AddCue({round, 10, QStringLiteral("label"), {}, {}});
        if (info->SaveTagToFile(FilePath()) == Outcome::Ok) {
            CheckSound(before, Content());
        } else {
            fuzz::Holds(Content() == before, "a file that is not saved is the same");
        }
    }
    return 0;
}
