// Chunks, lists of texts and cue points of any bytes: taken apart, changed, put together and taken apart
// again.
#include "fuzz_tags.h"

#include "backends/tags/chunked_plan.h"
#include "backends/tags/riff_chunks.h"
#include "backends/tags/riff_list.h"

namespace {

using namespace kestrune;

TagFields NewFields() {
    TagFields fields;
    fields.title = QStringLiteral("fuzz");
    fields.track = 3;
    return fields;
}

// The plan's pieces lie inside the old file, and the bytes of the sound are among them.
void CheckPieces(const FilePieces& pieces, qint64 fileBytes) {
    for (const FilePiece& piece : pieces.All()) {
        fuzz::Holds(piece.offset >= 0 && piece.lengthBytes >= 0 &&
                        piece.offset + piece.lengthBytes <= fileBytes,
                    "pieces lie inside the file");
    }
}

void CheckLists(const QByteArray& bytes) {
    fuzz::Holds(RenderRiffList(ParseRiffList(bytes)) == bytes || bytes.size() < 4,
                "a list that nobody changed is the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > fuzz::largestInput) {
        return 0;
    }
    const QByteArray bytes = fuzz::Input(data, size);
    CheckLists(bytes);
    static const fuzz::MemoryFile memory;
    memory.Write(bytes);
    BoundedFile file(memory.Path());
    if (file.Open() != Outcome::Ok) {
        return 0;
    }
    QList<NumberedCue> cues = WaveCues(file);
    if (!cues.isEmpty()) {
        cues.removeFirst();
    }
    cues.append({12345, {7, 8, QStringLiteral("l"), QStringLiteral("n"), QStringLiteral("t")}});
    const TagFields old = WaveInfoFields(file);
    const SavePlan plan = PlanWave(file, old, NewFields(), cues);
    if (plan.outcome != Outcome::Ok) {
        return 0;
    }
    if (plan.pieces) {
        CheckPieces(*plan.pieces, bytes.size());
        memory.Write(fuzz::Joined(*plan.pieces, bytes));
    }
    BoundedFile changed(memory.Path());
    fuzz::Holds(changed.Open() == Outcome::Ok, "the new file opens");
    fuzz::Holds(WaveInfoFields(changed).title == QLatin1String("fuzz"), "the title is read again");
    fuzz::Holds(WaveCues(changed).size() == cues.size(), "the cue points are read again");
    return 0;
}
