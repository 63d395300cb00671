#pragma once

#include <memory>
#include <type_traits>

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// Where character IDs stand in the body of a tag, by the format as it is published through version 19. The
/// layouts are the same in every version of a movie. Of the types that are not published, NameCharacter (type
/// 40) alone is known to have an ID.
///
/// An ID is a `u16` at a byte of the body, however the fields around it lie. Places that may hold no character
/// are visited too: 0, which is the main timeline in a symbol class and no sound in a button, and 0xFFFF, which
/// is no bitmap in a fill. Who gives new IDs leaves these two values alone.
class VXSWF_API VXCharacterIds {
public:
    enum class Role : unsigned char {
        kOwn,         ///< the character that the tag defines
        kOwnEntry,    ///< a character that an entry of the tag defines: imports
        kReference,   ///< a character that is defined elsewhere
        kNamedEntry,  ///< the same in an entry that names it: exports and symbol classes
    };
    /// `offset` is from the start of the body that was given, in bytes; two bytes are there.
    using Visitor = void (*)(void* context, unsigned int offset, Role role);

    static constexpr unsigned int kNoDepth = ~0u;

    /// Visits the places in ascending order. Of a sprite (type 39) these are its own ID and those in all tags
    /// inside, up to its end tag; a tag inside that fails does not hold up the next.
    ///
    /// 1 when the body ends early, holds a fill or filter of an unknown kind, or has sprites in sprites deeper
    /// than `kDeepest`; what was visited by then stands. What follows the last ID of a type is not looked at.
    /// Takes time in proportion to the length and allocates nothing.
    ///
    /// The visitor may write another ID to the place that it is given.
    static VXErrorCodeEnum Visit(unsigned int type, const unsigned char* body, unsigned int length,
                                 Visitor visitor, void* context);
    /// The same with anything that can be called with offset and role.
    template <typename Called>
    static VXErrorCodeEnum Visit(unsigned int type, const unsigned char* body, unsigned int length,
                                 Called&& visitor) {
        using Target = std::remove_reference_t<Called>;
        return Visit(
            type, body, length,
            [](void* context, unsigned int offset, Role role) {
                (*static_cast<Target*>(context))(offset, role);
            },
            const_cast<void*>(static_cast<const void*>(std::addressof(visitor))));
    }

    /// Whether a tag of the type defines a character, whose ID is then the first two bytes of its body.
    static bool DefinesCharacter(unsigned int type);
    /// Where the depth stands in the body of a placement or removal; `kNoDepth` for every other type.
    static unsigned int GetDepthOffset(unsigned int type);

    static constexpr unsigned int kDeepest = 8;
};
