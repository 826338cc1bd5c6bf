#include "backends/tags/genre_names.h"

#include <array>

namespace kestrune {

namespace {

constexpr std::array<const char*, genreCount> names = {"Blues",
                                                       "Classic Rock",
                                                       "Country",
                                                       "Dance",
                                                       "Disco",
                                                       "Funk",
                                                       "Grunge",
                                                       "Hip-Hop",
                                                       "Jazz",
                                                       "Metal",
                                                       "New Age",
                                                       "Oldies",
                                                       "Other",
                                                       "Pop",
                                                       "R&B",
                                                       "Rap",
                                                       "Reggae",
                                                       "Rock",
                                                       "Techno",
                                                       "Industrial",
                                                       "Alternative",
                                                       "Ska",
                                                       "Death Metal",
                                                       "Pranks",
                                                       "Soundtrack",
                                                       "Euro-Techno",
                                                       "Ambient",
                                                       "Trip-Hop",
                                                       "Vocal",
                                                       "Jazz+Funk",
                                                       "Fusion",
                                                       "Trance",
                                                       "Classical",
                                                       "Instrumental",
                                                       "Acid",
                                                       "House",
                                                       "Game",
                                                       "Sound Clip",
                                                       "Gospel",
                                                       "Noise",
                                                       "Alternative Rock",
                                                       "Bass",
                                                       "Soul",
                                                       "Punk",
                                                       "Space",
                                                       "Meditative",
                                                       "Instrumental Pop",
                                                       "Instrumental Rock",
                                                       "Ethnic",
                                                       "Gothic",
                                                       "Darkwave",
                                                       "Techno-Industrial",
                                                       "Electronic",
                                                       "Pop-Folk",
                                                       "Eurodance",
                                                       "Dream",
                                                       "Southern Rock",
                                                       "Comedy",
                                                       "Cult",
                                                       "Gangsta",
                                                       "Top 40",
                                                       "Christian Rap",
                                                       "Pop/Funk",
                                                       "Jungle",
                                                       "Native American",
                                                       "Cabaret",
                                                       "New Wave",
                                                       "Psychedelic",
                                                       "Rave",
                                                       "Showtunes",
                                                       "Trailer",
                                                       "Lo-Fi",
                                                       "Tribal",
                                                       "Acid Punk",
                                                       "Acid Jazz",
                                                       "Polka",
                                                       "Retro",
                                                       "Musical",
                                                       "Rock & Roll",
                                                       "Hard Rock",
                                                       "Folk",
                                                       "Folk-Rock",
                                                       "National Folk",
                                                       "Swing",
                                                       "Fast Fusion",
                                                       "Bebop",
                                                       "Latin",
                                                       "Revival",
                                                       "Celtic",
                                                       "Bluegrass",
                                                       "Avantgarde",
                                                       "Gothic Rock",
                                                       "Progressive Rock",
                                                       "Psychedelic Rock",
                                                       "Symphonic Rock",
                                                       "Slow Rock",
                                                       "Big Band",
                                                       "Chorus",
                                                       "Easy Listening",
                                                       "Acoustic",
                                                       "Humour",
                                                       "Speech",
                                                       "Chanson",
                                                       "Opera",
                                                       "Chamber Music",
                                                       "Sonata",
                                                       "Symphony",
                                                       "Booty Bass",
                                                       "Primus",
                                                       "Porn Groove",
                                                       "Satire",
                                                       "Slow Jam",
                                                       "Club",
                                                       "Tango",
                                                       "Samba",
                                                       "Folklore",
                                                       "Ballad",
                                                       "Power Ballad",
                                                       "Rhythmic Soul",
                                                       "Freestyle",
                                                       "Duet",
                                                       "Punk Rock",
                                                       "Drum Solo",
                                                       "A Cappella",
                                                       "Euro-House",
                                                       "Dance Hall",
                                                       "Goa",
                                                       "Drum & Bass",
                                                       "Club-House",
                                                       "Hardcore",
                                                       "Terror",
                                                       "Indie",
                                                       "BritPop",
                                                       "Afro-Punk",
                                                       "Polsk Punk",
                                                       "Beat",
                                                       "Christian Gangsta Rap",
                                                       "Heavy Metal",
                                                       "Black Metal",
                                                       "Crossover",
                                                       "Contemporary Christian",
                                                       "Christian Rock",
                                                       "Merengue",
                                                       "Salsa",
                                                       "Thrash Metal",
                                                       "Anime",
                                                       "JPop",
                                                       "SynthPop"};

} // namespace

QString NameOfGenre(qint16 number) {
    return number >= 0 && number < genreCount ? QString::fromLatin1(names[static_cast<size_t>(number)])
                                              : QString();
}

qint16 GenreOfText(const QString& text) {
    QString trimmed = text.trimmed();
    if (trimmed.startsWith(QLatin1Char('(')) && trimmed.endsWith(QLatin1Char(')'))) {
        trimmed = trimmed.mid(1, trimmed.size() - 2);
    }
    bool isNumber = false;
    const int number = trimmed.toInt(&isNumber);
    if (isNumber) {
        return number >= 0 && number < genreCount ? static_cast<qint16>(number) : noGenre;
    }
    for (qint16 at = 0; at < genreCount; ++at) {
        if (trimmed.compare(QLatin1String(names[static_cast<size_t>(at)]), Qt::CaseInsensitive) == 0) {
            return at;
        }
    }
    return noGenre;
}

} // namespace kestrune
