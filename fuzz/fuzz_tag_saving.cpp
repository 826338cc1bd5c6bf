// Files of any bytes: read, saved with new fields, read and saved again; the sound stays the same all the
// time, as other libraries decode it. The first byte says which tag, and which of the fields. The
// counts of saved files whose sound was compared are told now and then, by kind.
#include "decoded_sound.h"
#include "fuzz_support.h"

#include "backends/tags/tag_information.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <map>
#include <string>

namespace {

using namespace kestrune;

// Room for the heads of Windows Media and MP4 files.
constexpr size_t largestFile = 3 * fuzz::largestInput;

constexpr unsigned id3v2Bit = 1;
constexpr unsigned longTextBit = 2;
constexpr unsigned emptyBit = 4;

class Counts {
public:
    ~Counts() { Tell(); }
    void Add(const std::string& format) {
        ++counts_[format];
        // A run that is ended from outside does not come to its end here.
        if (++all_ % 10000 == 0) {
            Tell();
        }
    }

private:
    void Tell() const {
        for (const auto& [format, count] : counts_) {
            std::fprintf(stderr, "compared %s: %llu\n", format.c_str(), count);
        }
    }

    std::map<std::string, unsigned long long> counts_;
    unsigned long long all_ = 0;
};

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

void SetFields(TagFields& fields, int round, unsigned choice) {
    fields.title = QStringLiteral("Title %1").arg(round);
    fields.artist = QString::fromUtf8("Ωδή");
    fields.comment = QStringLiteral("comment").repeated((choice & longTextBit) != 0 && round == 0 ? 400 : 1);
    fields.genre = static_cast<qint16>(round);
    fields.year = 1990 + round;
    fields.track = 5;
    fields.url = QStringLiteral("http://example.org/");
    if ((choice & emptyBit) != 0 && round == 1) {
        fields = TagFields();
    }
}

// Where an ID3v1 tag stands behind a frame that was cut off it is read as the rest of that.
bool IsSame(const QByteArray& bytes, const fuzz::DecodedSound& before, const fuzz::DecodedSound& after) {
    if (before.format != after.format || before.sums == after.sums) {
        return before.format == after.format;
    }
    const auto whole = before.sums.size() - 1;
    return bytes.right(128).startsWith("TAG") && before.sums.mid(0, whole) == after.sums.mid(0, whole);
}

void CheckSound(const QByteArray& before, const QByteArray& after) {
    static Counts counts;
    const fuzz::DecodedSound old = fuzz::SoundDecoder(before).Decode();
    if (old.sums.isEmpty()) {
        return;
    }
    counts.Add(old.format.toStdString());
    fuzz::Holds(IsSame(before, old, fuzz::SoundDecoder(after).Decode()), "the sound is the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > largestFile) {
        return 0;
    }
    const QByteArray bytes = fuzz::Input(data + 1, size - 1);
    Write(bytes);
    const auto info = MakeAudioInformation();
    info->SetTagVersion((data[0] & id3v2Bit) != 0 ? TagKind::Id3v2 : TagKind::Id3v1);
    for (int round = 0; round < 2; ++round) {
        const QByteArray before = Content();
        if (info->ReadTagFromFile(FilePath()) != Outcome::Ok) {
            return 0;
        }
        SetFields(info->Tag(), round, data[0]);
        info->AddCue({round, 10, QStringLiteral("label"), {}, {}});
        if (info->SaveTagToFile(FilePath()) == Outcome::Ok) {
            CheckSound(before, Content());
        } else {
            fuzz::Holds(Content() == before, "a file that is not saved is the same");
        }
    }
    return 0;
}
