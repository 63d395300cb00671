#pragma once

#include <string>

#include "kit/VXProgress.h"
#include "whole/VXMovieCombiner.h"
#include "whole/VXWholeMovie.h"

/// What a code says, as a part of a sentence.
VXSWF_API const char* VXErrorText(VXErrorCodeEnum code);

/// Loads and saves movies by path, and says in words what went wrong: the file, the place in it, the reason that
/// the system gives. A path is UTF-8 on Windows and in the system's own encoding elsewhere.
///
///     VXMovieIO files;
///     VXWholeMovie movie;
///     if (files.Load(movie, "in.swf") != kVXSuccess) std::cerr << files.GetErrorText() << '\n';
class VXSWF_API VXMovieIO {
public:
    VXMovieIO();
    ~VXMovieIO();

    /// Into an empty movie, with the load of its own class; 1 for a file that cannot be read. What a
    /// `VXFlintFile` has read before it fails stays in it.
    VXErrorCodeEnum Load(VXFlintFile& movie, const std::string& path);
    /// Writes beside the file and renames, so that the file is replaced by a whole movie or not at all. A link is
    /// followed, and the file keeps its permissions. What is no file, such as a device, gets the movie once all
    /// of it is made.
    VXErrorCodeEnum Save(VXFlintFile& movie, const std::string& path);
    /// Puts the movie in a file into that of the combiner.
    VXErrorCodeEnum Combine(VXMovieCombiner& combiner, const std::string& path,
                            const VXMovieCombiner::Options& options = {});

    /// For the calls that follow; empty for none. A stop fails the call, and a save leaves the file as it was.
    void SetProgress(VXProgress progress);
    /// Of the last call: empty when it went well.
    const std::string& GetErrorText() const { return m_ErrorText; }

private:
    template <typename Read>
    VXErrorCodeEnum ReadFile(const std::string& path, const Read& read);
    VXErrorCodeEnum Dump(VXFlintFile& movie, const std::string& path, IVXStream& stream);
    VXErrorCodeEnum Fail(const std::string& path, const std::string& text, VXErrorCodeEnum code = kVXFailure);
    /// With the reason that the system gave last, if it gave one.
    VXErrorCodeEnum FailForSystem(const std::string& path, const std::string& text);

    VXProgress m_Progress;
    std::string m_ErrorText;
};
