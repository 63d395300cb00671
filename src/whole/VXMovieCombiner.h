#pragma once

#include <memory>
#include <string>

#include "framework/VXFlintFile.h"
#include "graphics/VXFlintMatrix.h"
#include "platform/VXString.h"

/// Puts movies into another one, each as a sprite of it, without loss. The movie that takes them in may be
/// carried as bytes or parsed; those that come are read as bytes, and stay bytes.
///
/// In front of the tags of one frame come, in this order:
///
/// - of the source, in its order: definitions and what belongs to them, imports, exports, scripts that run once
///   for a character (type 59), scripts of version 3
/// - one sprite with all the rest: placements, scripts, labels, sounds, freed characters, unknown types
/// - the symbol classes of the source, with the sprite in the place of its main timeline
/// - a placement of the sprite
///
/// Left out: end tags and what follows them, file attributes (69), background colour (9), protection (24),
/// switches for debuggers and telemetry (58, 64, 93), metadata (77), product and debug data (41, 63), script
/// limits (65), scenes (86). Shared JPEG tables (8) are joined with each picture that needs them (type 6), which
/// becomes one of type 21.
///
/// A character keeps its ID where this movie does not use that, and gets the lowest free one otherwise. Every
/// reference follows. Where a movie of a version below 6 meets one above, its clip events take the longer form.
///
/// The movie must not be changed by others between two calls of one combiner, which remembers where its frames
/// begin and what IDs are taken. So many calls take time in proportion to what they bring.
class VXSWF_API VXMovieCombiner {
public:
    struct Options {
        /// From 1. One more than the movie has adds a frame.
        unsigned int Frame = 1;
        /// Of the instance, without one if empty.
        VXString Name;
        /// As made, the identity.
        VXFlintMatrix Matrix;
        /// 0 takes the next above all that the timeline uses, masks included.
        unsigned short Depth = 0;
        /// Scripts see the sprite as `_root`. Its first frame begins with a script for that, which players from
        /// version 7 on know. No effect beside scripts of version 3, and in movies below version 5.
        bool LocksRoot = false;
        /// Takes a source whose last tag is cut, without that tag.
        bool TakesCutSource = false;
    };

    /// `movie` must outlive the combiner.
    explicit VXMovieCombiner(VXFlintFile& movie);
    ~VXMovieCombiner();
    VXMovieCombiner(const VXMovieCombiner&) = delete;
    VXMovieCombiner& operator=(const VXMovieCombiner&) = delete;

    /// Reads the source, which may be compressed in any way that `VXWholeMovie` knows, and takes it in. On
    /// failure the movie is what it was. 1 for a source that cannot be loaded or is cut, for more characters than
    /// there are IDs, for scripts of version 3 beside older ones, for a frame or depth that there is not, and
    /// when memory runs out or pictures with their tables would take more than 64 MiB and 16 times the source.
    ///
    /// A movie that has no scripts takes over the kind that the source's file attributes state, and these
    /// themselves if it has none. Its version becomes that of the source where that is higher, and at least 3.
    VXErrorCodeEnum Combine(VXBitStream& source, const Options& options);
    /// The same from the start of a stream; null gives 1.
    VXErrorCodeEnum Combine(IVXStream* source, const Options& options);
    VXErrorCodeEnum Combine(VXBitStream& source) { return Combine(source, Options()); }
    VXErrorCodeEnum Combine(IVXStream* source) { return Combine(source, Options()); }

    // Of the last call.

    /// Why it failed; empty when it did not.
    const std::string& GetErrorText() const { return m_ErrorText; }
    /// What was left out or is damaged in the source beyond what is told above; empty for most.
    const std::string& GetRemarks() const { return m_Remarks; }
    unsigned short GetSpriteId() const { return m_SpriteId; }
    unsigned short GetDepth() const { return m_Depth; }
    bool HasRaisedVersion() const { return m_HasRaisedVersion; }

private:
    struct Known;
    struct Source;
    class Staging;

    template <typename Stream>
    VXErrorCodeEnum LoadAndTakeIn(Stream& stream, const Options& options);
    VXErrorCodeEnum TakeIn(Source& source, const Options& options);
    VXErrorCodeEnum Fail(std::string text);

    VXFlintFile& m_Movie;
    std::unique_ptr<Known> m_Known;  // of the movie, from the first call on
    std::string m_ErrorText;
    std::string m_Remarks;
    unsigned short m_SpriteId = 0;
    unsigned short m_Depth = 0;
    bool m_HasRaisedVersion = false;
};
