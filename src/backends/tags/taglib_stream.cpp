#include "backends/tags/taglib_stream.h"

#include <algorithm>

namespace kestrune {

TagLib::ByteVector TagLibStream::readBlock(unsigned long length) {
    const auto wanted = static_cast<qint64>(std::min<unsigned long>(length, 0x7FFFFFFFUL));
    const QByteArray block = file_.Read(wanted);
    return {block.constData(), static_cast<unsigned int>(block.size())};
}

void TagLibStream::seek(long offset, Position from) {
    switch (from) {
    case Beginning:
        file_.Seek(offset);
        break;
    case Current:
        file_.Seek(file_.Position() + offset);
        break;
    case End:
        file_.Seek(file_.SizeBytes() + offset);
        break;
    }
}

} // namespace kestrune
