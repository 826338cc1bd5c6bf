// Files of any bytes: read, saved with new fields, read and saved again; the sound stays the same all the
// time, as other libraries decode it. The first byte says which tag, which of the fields, and if checksums
// stay as they are. The counts of saved files whose sound was compared are told now and then, by kind.
#include "decoded_sound.h"
#include "fuzz_support.h"
#include "ogg_checksums.h"

#include "backends/tags/tag_information.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <malloc.h>

namespace {

using namespace kestrune;

// Room for the heads of Windows Media and MP4 files.
constexpr size_t largestFile = 3 * fuzz::largestInput;

constexpr unsigned id3v2Bit = 1;
constexpr unsigned longTextBit = 2;
constexpr unsigned emptyBit = 4;
constexpr unsigned asItIsBit = 8;

// Inputs whose sound was compared, some of each kind.
class Compared {
public:
    void Keep(const std::string& format, const QByteArray& input) {
        constexpr size_t mostOfAKind = 64;
        constexpr size_t firstThatMayGo = 16; // others come from these
        std::vector<QByteArray>& kept = inputs_[format];
        if (kept.size() < mostOfAKind) {
            kept.push_back(input);
        } else {
            ++kept_;
            kept[firstThatMayGo + kept_ % (mostOfAKind - firstThatMayGo)] = input;
        }
    }
    // One of any kind, null if there is none yet.
    const QByteArray* Choose(unsigned number) const {
        if (inputs_.empty()) {
            return nullptr;
        }
        const auto& kind = std::next(inputs_.begin(), number % inputs_.size())->second;
        return &kind[number / inputs_.size() % kind.size()];
    }

private:
    std::map<std::string, std::vector<QByteArray>> inputs_;
    size_t kept_ = 0;
};

Compared& ComparedInputs() {
    static Compared inputs;
    return inputs;
}

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

constexpr qsizetype id3v1Bytes = 128;

bool HoldsId3v1(const QByteArray& bytes) {
    return bytes.right(id3v1Bytes).startsWith("TAG");
}

QByteArray WithoutId3v1(const QByteArray& bytes) {
    return HoldsId3v1(bytes) ? bytes.chopped(id3v1Bytes) : bytes;
}

// Up to where the head of a file of Monkey's Audio says that the sound ends.
QByteArray MonkeysSound(const QByteArray& bytes) {
    constexpr qsizetype sizesAt = 8;
    constexpr int sizes = 5;
    const qsizetype start = fuzz::LeadingTagBytes(bytes);
    qsizetype end = start;
    for (int size = 0; size < sizes && start + sizesAt + sizes * 4 <= bytes.size(); ++size) {
        end += qFromLittleEndian<quint32>(bytes.constData() + start + sizesAt + 4 * size);
    }
    return bytes.left(end);
}

// The library hands the last frame of Monkey's Audio all bytes up to the end of the file, and a spoilt one is
// decoded on into the tag.
bool IsSameMonkeysSound(const QByteArray& before, const QByteArray& after) {
    const fuzz::DecodedSound old = fuzz::SoundDecoder(MonkeysSound(before), "ape").Decode();
    const fuzz::DecodedSound sound = fuzz::SoundDecoder(MonkeysSound(after), "ape").Decode();
    return old.format == "ape" && sound.format == "ape" && old.sums == sound.sums;
}

// Where an ID3v1 tag stood behind a frame that was cut off, the library reads it as the rest of that; then
// the tag is all that may differ.
bool IsSame(const QByteArray& before, const fuzz::DecodedSound& old, const QByteArray& after,
            const fuzz::DecodedSound& sound) {
    return (old.format == sound.format && old.sums == sound.sums) ||
           (HoldsId3v1(before) && WithoutId3v1(before) == WithoutId3v1(after)) ||
           (old.format == "ape" && IsSameMonkeysSound(before, after));
}

using KnownSound = std::optional<fuzz::DecodedSound>;

// The sound of the file after a save, if it was decoded; so may be that of the file before.
KnownSound CheckedSound(const QByteArray& input, const QByteArray& before, const KnownSound& known,
                        const QByteArray& after) {
    static Counts counts;
    const fuzz::DecodedSound old = known ? *known : fuzz::SoundDecoder(before).Decode();
    if (old.sums.isEmpty()) {
        return std::nullopt;
    }
    counts.Add(old.format.toStdString());
    ComparedInputs().Keep(old.format.toStdString(), input);
    const fuzz::DecodedSound sound = fuzz::SoundDecoder(after, old.format).Decode();
    fuzz::Holds(IsSame(before, old, after, sound), "the sound is the same");
    return sound;
}

} // namespace

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t mostBytes);

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    // Memory that goes back to the system after each file and comes again, as pages of zeros, takes half of
    // the time.
    constexpr int keptBytes = 1 << 30;
    ::mallopt(M_MMAP_MAX, 0);
    ::mallopt(M_TRIM_THRESHOLD, keptBytes);
    ::mallopt(M_TOP_PAD, 1 << 20);
    return 0;
}

// Most of what the fuzzer makes is no file that can be saved, and few kinds outlive many changes. So every
// other input is made from one that was saved, of any kind alike.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t mostBytes, unsigned seed) {
    const QByteArray* saved = seed % 2 != 0 ? ComparedInputs().Choose(seed / 2) : nullptr;
    if (saved != nullptr && static_cast<size_t>(saved->size()) <= mostBytes) {
        size = static_cast<size_t>(saved->size());
        std::memcpy(data, saved->constData(), size);
    }
    return LLVMFuzzerMutate(data, size, mostBytes);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > largestFile) {
        return 0;
    }
    const QByteArray input = fuzz::Input(data, size);
    const QByteArray bytes = (data[0] & asItIsBit) != 0 ? input.mid(1) : fuzz::WithOggChecksums(input.mid(1));
    Write(bytes);
    const auto info = MakeAudioInformation();
    info->SetTagVersion((data[0] & id3v2Bit) != 0 ? TagKind::Id3v2 : TagKind::Id3v1);
    QByteArray before = bytes;
    KnownSound sound;
    for (int round = 0; round < 2; ++round) {
        if (info->ReadTagFromFile(FilePath()) != Outcome::Ok) {
            return 0;
        }
        SetFields(info->Tag(), round, data[0]);
        info->AddCue({round, 10, QStringLiteral("label"), {}, {}});
        const Outcome saved = info->SaveTagToFile(FilePath());
        const QByteArray after = Content();
        fuzz::Holds(saved == Outcome::Ok || after == before, "a file that is not saved is the same");
        if (after != before) {
            sound = CheckedSound(input, before, sound, after);
        }
        before = after;
    }
    return 0;
}
