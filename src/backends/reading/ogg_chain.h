// Ogg files of several streams, one behind the other.
#pragma once

class QIODevice;

namespace kestrune {

// True if the last page of an Ogg file is not of the stream that its first page begins: then the file's
// length and positions are not those of one stream. False for files that are no Ogg.
bool IsChainedOgg(QIODevice& device);

} // namespace kestrune
