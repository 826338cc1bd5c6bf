#include "backends/formats/demuxer_choice.h"

#include "backends/formats/file_kind.h"
#include "backends/formats/leading_tag.h"

#include <QFileInfo>
#include <QStringList>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/avstring.h>
}

namespace kestrune {

namespace {

constexpr qint64 leastProbeBytes = 4096;
constexpr qint64 mostProbeBytes = 1 << 20;
// Below this a kind was guessed from very little.
constexpr int trustedScore = AVPROBE_SCORE_EXTENSION / 2;
// Noise in front of MPEG audio may be long.
constexpr qint64 mostMpegSearchBytes = 16 << 20;

// Readers of recorded sound in one file. The library has others that take their data from the network, from
// devices or from further files, by ways of their own that nobody can refuse, and those of bare samples,
// which would read anything.
constexpr const char* recordedSound =
    "aac,ac3,act,adx,aea,aiff,amr,amrnb,amrwb,ape,apm,asf,ast,au,avi,avr,caf,dsf,dss,dts,dtshd,dv,eac3,epaf,"
    "flac,flv,g729,gsm,gxf,hcom,iff,ircam,kvag,loas,matroska,webm,mlp,mov,mp4,m4a,3gp,3g2,mj2,mp3,mpc,mpc8,"
    "mpeg,mpegts,mxf,nistsphere,nsv,nut,ogg,oma,pvf,rm,rso,sds,shn,sox,spdif,swf,tak,truehd,tta,voc,w64,wav,"
    "wtv,wv,wve";

bool HasAudioExtension(const QString& path) {
    static const QStringList extensions = {
        QStringLiteral("wav"), QStringLiteral("mp3"), QStringLiteral("mp2"),  QStringLiteral("mp1"),
        QStringLiteral("mpa"), QStringLiteral("ogg"), QStringLiteral("wma"),  QStringLiteral("dss"),
        QStringLiteral("aac"), QStringLiteral("ac3"), QStringLiteral("mpeg"),
    };
    return extensions.contains(QFileInfo(path).suffix().toLower());
}

bool IsMpegAudio(const AVInputFormat* format) {
    return format != nullptr && qstrcmp(format->name, "mp3") == 0;
}

struct Guessed {
    const AVInputFormat* format = nullptr;
    int score = 0;
};

// From a little of the file, or from more of it where that says too little. The library would read it by
// itself, but long tags in front would be all that it sees.
Guessed Guess(ByteSource& source, const QString& path) {
    const qint64 start = LeadingTagBytes(source);
    // The name without its folder is all that may be used to tell a kind.
    const QByteArray name = QFileInfo(path).fileName().toUtf8();
    Guessed guessed;
    for (qint64 bytes = leastProbeBytes; guessed.format == nullptr || guessed.score <= AVPROBE_SCORE_RETRY;
         bytes *= 4) {
        const QByteArray head = source.ReadAt(start, bytes);
        QByteArray padded = head + QByteArray(AVPROBE_PADDING_SIZE, '\0');
        AVProbeData data = {};
        data.filename = name.constData();
        data.buf = reinterpret_cast<unsigned char*>(padded.data());
        data.buf_size = static_cast<int>(head.size());
        guessed.format = av_probe_input_format3(&data, 1, &guessed.score);
        if (head.size() < bytes || bytes >= mostProbeBytes) {
            break;
        }
    }
    return guessed;
}

} // namespace

const AVInputFormat* ChooseDemuxer(ByteSource& source, const QString& path) {
    const auto [format, score] = Guess(source, path);
    const bool recorded = format != nullptr && av_match_list(format->name, recordedSound, ',') > 0;
    if (recorded && score >= trustedScore && !IsMpegAudio(format)) {
        return format;
    }
    // A few frames are too little for the library, and false ones in other data too much.
    if (FindKind(source).kind == FileKind::Mpeg) {
        return av_find_input_format("mp3");
    }
    const bool believed = HasAudioExtension(path);
    if ((believed || IsMpegAudio(format)) && FindMpegFrameAnywhere(source, mostMpegSearchBytes)) {
        return av_find_input_format("mp3");
    }
    return recorded && believed && !IsMpegAudio(format) ? format : nullptr;
}

} // namespace kestrune
