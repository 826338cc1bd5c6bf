// ID3v2 tags in front of the audio, of any kind of file.
#pragma once

#include <QtGlobal>

class QIODevice;

namespace kestrune {

// Bytes of all ID3v2 tags at the start of the device; 0 without one, and never beyond its end.
qint64 LeadingTagBytes(QIODevice& device);

} // namespace kestrune
