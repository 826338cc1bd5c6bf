// Picks what reads a file, by its content first.
#pragma once

#include "backends/formats/output_format.h"
#include "backends/reading/sample_source.h"
#include "components/outcome.h"

#include <QString>

#include <memory>

namespace kestrune {

struct OpenedSource {
    std::unique_ptr<SampleSource> source; // null unless the outcome is Ok
    Outcome outcome = Outcome::NotDecodable;
};

// Content with a mark of its own is read as what it is, whatever its name says. Without one, the extensions
// of headerless kinds are data of the given formats; any other file is left to what its packets look like.
// Only plain files are opened: NotFound for folders, pipes and devices. NotSupported for headerless data
// whose set format makes no sense.
OpenedSource OpenSource(const QString& path, const HeaderlessFormats& headerless);

} // namespace kestrune
