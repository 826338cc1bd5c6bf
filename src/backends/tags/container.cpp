#include "backends/tags/container.h"

#include <QByteArray>

namespace kestrune {

namespace {

constexpr qint64 id3HeaderBytes = 10;
constexpr qint64 headBytes = 64;
constexpr int mostLeadingTags = 4;

Container OggKind(const QByteArray& head) {
    // The first packet of a page with one segment stands at byte 28.
    const QByteArray packet = head.mid(28);
    if (packet.startsWith("\x01vorbis")) {
        return Container::OggVorbis;
    }
    if (packet.startsWith("OpusHead")) {
        return Container::OggOpus;
    }
    if (packet.startsWith("Speex   ")) {
        return Container::OggSpeex;
    }
    if (packet.startsWith("\x7F"
                          "FLAC")) {
        return Container::OggFlac;
    }
    return Container::OggOther;
}

Container BySignature(const QByteArray& head) {
    static const QByteArray asfHeaderObject = QByteArray::fromHex("3026b2758e66cf11a6d900aa0062ce6c");
    const QByteArray form = head.mid(8, 4);
    if (head.startsWith("RIFF") && form == "WAVE") {
        return Container::Wave;
    }
    if (head.startsWith("RIFF") && form == "AVI ") {
        return Container::Avi;
    }
    if (head.startsWith("FORM") && (form == "AIFF" || form == "AIFC")) {
        return Container::Aiff;
    }
    if (head.startsWith("OggS")) {
        return OggKind(head);
    }
    if (head.startsWith("fLaC")) {
        return Container::Flac;
    }
    if (head.startsWith("MP+") || head.startsWith("MPCK")) {
        return Container::Musepack;
    }
    if (head.startsWith("MAC ")) {
        return Container::MonkeysAudio;
    }
    if (head.startsWith("wvpk")) {
        return Container::WavPack;
    }
    if (head.startsWith("TTA1")) {
        return Container::TrueAudio;
    }
    if (head.startsWith(asfHeaderObject)) {
        return Container::Asf;
    }
    if (head.mid(4, 4) == "ftyp") {
        return Container::Mp4;
    }
    return Container::Unknown;
}

// Kinds that are left to the general reader, but are sure enough to overrule an extension.
bool HasOtherSignature(const QByteArray& head) {
    return head.startsWith(".snd") || head.startsWith("caff") || head.startsWith("RF64") ||
           head.startsWith("BW64") || head.startsWith("riff\x2E\x91") ||
           head.startsWith("Creative Voice File") || head.startsWith("\x1A\x45\xDF\xA3");
}

} // namespace

qint64 SkipLeadingTags(BoundedFile& file) {
    qint64 position = 0;
    for (int tag = 0; tag < mostLeadingTags; ++tag) {
        const QByteArray head = file.ReadAt(position, id3HeaderBytes);
        if (head.size() < id3HeaderBytes || !head.startsWith("ID3")) {
            break;
        }
        qint64 sizeBytes = 0; // stored in four 7-bit bytes
        for (int at = 6; at < 10; ++at) {
            sizeBytes = sizeBytes << 7 | (static_cast<unsigned char>(head[at]) & 0x7F);
        }
        const bool footer = (static_cast<unsigned char>(head[5]) & 0x10U) != 0;
        position += id3HeaderBytes + sizeBytes + (footer ? id3HeaderBytes : 0);
    }
    return position;
}

ContainerFound DetectContainer(BoundedFile& file) {
    const qint64 start = SkipLeadingTags(file);
    const QByteArray head = file.ReadAt(start, headBytes);
    ContainerFound found;
    found.container = BySignature(head);
    found.signature = found.container != Container::Unknown || HasOtherSignature(head);
    if (!found.signature) {
        found.mpegFrame = FindMpegFrame(file, start);
        if (found.mpegFrame) {
            found.container = Container::Mpeg;
            found.signature = start > 0; // the tag in front is a mark too
        }
    }
    return found;
}

} // namespace kestrune
