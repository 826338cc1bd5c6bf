// Makes the sample pieces: make_samples FOLDER. Needs ffmpeg, lame, oggenc and sox.
#include "pieces.h"
#include "wave_file.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace kestrune {

namespace {

struct Piece {
    QString name; // of the file, without extension
    QString title;
    QString extension;
    std::function<Sound(int)> make;
    int rateHz;
    int channels;
    int leadFrames; // silence in front
    // The command that codes IN to OUT; empty for a plain WAVE file.
    QStringList command;
};

PieceTexts TextsOf(const Piece& piece) {
    return {piece.title, QStringLiteral("Kestrune"), QStringLiteral("Kestrune Samples")};
}

QStringList Words(const char* text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QList<Piece> Pieces() {
    // The first frame of a Windows Media stream is lost in decoding: 2048 frames of silence take its place.
    const QStringList metadata = Words("-metadata title=TITLE -metadata artist=ARTIST -metadata album=ALBUM "
                                       "-fflags +bitexact -flags:a +bitexact");
    const QStringList ffmpeg = Words("ffmpeg -v error -y -i IN");
    return {
        {QStringLiteral("first-light"),
         QStringLiteral("First Light"),
         QStringLiteral("wav"),
         FirstLight,
         44100,
         2,
         0,
         {}},
        {QStringLiteral("paper-lanterns"), QStringLiteral("Paper Lanterns"), QStringLiteral("mp3"),
         PaperLanterns, 44100, 2, 0,
         Words("lame --quiet -b 128 -q 2 --add-id3v2 --tt TITLE --ta ARTIST --tl ALBUM IN OUT")},
        {QStringLiteral("harbour-steps"), QStringLiteral("Harbour Steps"), QStringLiteral("ogg"),
         HarbourSteps, 44100, 2, 0, Words("oggenc -Q -q 1 -s 1 -t TITLE -a ARTIST -l ALBUM -o OUT IN")},
        {QStringLiteral("slow-tide"), QStringLiteral("Slow Tide"), QStringLiteral("wma"), SlowTide, 44100, 2,
         2048, ffmpeg + Words("-c:a wmav2 -b:a 64k") + metadata + Words("OUT")},
        {QStringLiteral("music-box"), QStringLiteral("Music Box"), QStringLiteral("wav"), MusicBox, 22050, 1,
         0, ffmpeg + Words("-c:a adpcm_ima_wav -b:a 89k") + metadata + Words("OUT")},
        {QStringLiteral("night-signal"), QStringLiteral("Night Signal"), QStringLiteral("vox"), NightSignal,
         8000, 1, 0, Words("sox -D IN OUT")},
    };
}

bool Code(const Piece& piece, const QString& in, const QString& out) {
    const PieceTexts texts = TextsOf(piece);
    QStringList command = piece.command;
    for (QString& word : command) {
        if (word == QLatin1String("IN")) {
            word = in;
        } else if (word == QLatin1String("OUT")) {
            word = out;
        } else {
            word.replace(QLatin1String("TITLE"), texts.title);
            word.replace(QLatin1String("ARTIST"), texts.artist);
            word.replace(QLatin1String("ALBUM"), texts.album);
        }
    }
    return QProcess::execute(command.first(), command.mid(1)) == 0;
}

bool MakePiece(const Piece& piece, const QDir& folder, const QDir& scratch) {
    Sound sound = piece.make(piece.rateHz);
    const Level level = Measure(sound);
    for (auto* channel : {&sound.left, &sound.right}) {
        channel->insert(channel->begin(), static_cast<std::size_t>(piece.leadFrames), 0.0);
    }
    const QString target = folder.filePath(piece.name + QLatin1Char('.') + piece.extension);
    const QString wave = scratch.filePath(piece.name + QLatin1String(".wav"));
    const bool made = piece.command.isEmpty()
                          ? WriteWave(target, sound, piece.channels, TextsOf(piece))
                          : WriteWave(wave, sound, piece.channels, {}) && Code(piece, wave, target);
    std::printf("%-20s %5.2f s  peak %6.2f dB  RMS %6.2f dB  mean %9.6f  ends %8.6f  %7lld bytes%s\n",
                qPrintable(QFileInfo(target).fileName()),
                static_cast<double>(sound.left.size()) / sound.rateHz, level.peakDb, level.rmsDb, level.dc,
                level.edge, static_cast<long long>(QFileInfo(target).size()), made ? "" : "  FAILED");
    return made;
}

} // namespace

} // namespace kestrune

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: make_samples FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const QTemporaryDir scratch;
    bool allMade = folder.exists() && scratch.isValid();
    for (const kestrune::Piece& piece : kestrune::Pieces()) {
        allMade = kestrune::MakePiece(piece, folder, QDir(scratch.path())) && allMade;
    }
    return allMade ? 0 : 1;
}
