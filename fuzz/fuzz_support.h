// What the fuzz targets share. None of them touches a file.
#pragma once

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace kestrune::fuzz {

// Longer inputs find nothing that shorter ones do not, and take the time of many.
inline constexpr size_t largestInput = 8192;

inline QByteArray Input(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

// Ends the process, which the fuzzer takes for a crash, when something that always holds does not.
inline void Holds(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

} // namespace kestrune::fuzz
