// How a file with changed fields is made of the old one.
#pragma once

#include "app/file_pieces.h"
#include "components/outcome.h"

#include <optional>

namespace kestrune {

struct SavePlan {
    Outcome outcome = Outcome::Ok;    // NotSupported: the file stays as it is, and so with NotDecodable
    std::optional<FilePieces> pieces; // nothing when the file tells all that already

    static SavePlan Refused(Outcome outcome) { return {outcome, std::nullopt}; }
};

} // namespace kestrune
