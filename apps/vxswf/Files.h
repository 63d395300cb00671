#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Report.h"
#include "vxswf.h"

/// A file name that stands for standard input or standard output.
inline constexpr const char* kStandardStream = "-";

/// What a movie means that ends before its header says so.
enum class IfShort {
    kFail,
    kNote,  ///< it is told, and what is there is loaded
};

/// Loads the movie in `file`. With `isRaw` only placements, sprites and file attributes are parsed, and every
/// other tag is carried as it is. What goes wrong has been reported when the call comes back.
ExitCode LoadMovie(const std::string& file, bool isRaw, IfShort ifShort, VXFlintFile& movie);

/// Loads the movie in `file` with every tag as it is, however it is packed.
ExitCode LoadWholeMovie(const std::string& file, IfShort ifShort, VXWholeMovie& movie);

/// The bytes of a file that begins as a movie does.
ExitCode ReadMovie(const std::string& file, std::vector<unsigned char>& bytes);

/// Dumps `movie` to `file`, which gets a whole movie or stays as it was; `OutputFile` tells how. What goes
/// wrong has been reported when the call comes back.
ExitCode SaveMovie(VXFlintFile& movie, const std::string& file);
ExitCode SaveMovie(VXWholeMovie& movie, const std::string& file);

/// The bytes of a file that is no movie and has `longest` of them at most. What goes wrong has been reported
/// when the call comes back.
ExitCode ReadFile(const std::string& file, std::size_t longest, std::vector<unsigned char>& bytes);
