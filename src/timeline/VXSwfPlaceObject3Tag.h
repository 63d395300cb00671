#pragma once

#include <vector>

#include "timeline/VXFlintFilter.h"
#include "timeline/VXSwfPlaceObject2Tag.h"

/// A placement that may have filters, a blend mode and a class by name. Built by code, it is written from its
/// fields:
///
///     type 70:  the first byte of flags as in type 26
///               0 ub[3], HasImage ub[1], HasClassName ub[1], HasCacheAsBitmap ub[1],
///               HasBlendMode ub[1], HasFilterList ub[1]
///               Depth u16
///               ClassName str                            when HasClassName
///               CharacterId, Matrix, CxForm, Ratio, Name, ClipDepth as in type 26
///               count u8, filters                        when HasFilterList
///               0 u8                                     when HasBlendMode
///               ClipActions                              when HasClipActions
///
/// A loaded one keeps its body and is written from that for life, so that filters, blend mode and clip
/// actions of any kind survive; of its fields only depth, clip depth and character reach the bytes. A load
/// reads up to the clip depth to find these, and takes a class name also when `HasImage` and `HasCharacter`
/// are set.
///
/// Kept: a load never sets `HasName`, reads no name, and takes the first two bytes of a name for the clip
/// depth when both are there. The blend mode that a dump writes is always 0.
class VXSWF_API VXSwfPlaceObject3Tag : public VXSwfPlaceObject2Tag {
public:
    // Copies share the filters, and the kept body until one of them changes it.
    VXSwfPlaceObject3Tag(const VXSwfPlaceObject3Tag&) = default;
    VXSwfPlaceObject3Tag& operator=(const VXSwfPlaceObject3Tag&) = default;

    /// Writes the kept body. Without one it regenerates the body as type 26 does and makes `HasFilterList`
    /// tell whether there are filters. Both take the long header.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Reaches a kept body when `HasCharacter` is set.
    void SetReferencedID(unsigned short id) override;
    ~VXSwfPlaceObject3Tag() override;
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;
    /// With a non-zero `adjustClip` and `HasClipDepth` the clip depth becomes `depth` itself. Both reach a
    /// kept body.
    void SetDepth(unsigned short depth, short adjustClip) override;

    /// The effects of a placement that do not change over time, written in this order. The tag owns them from
    /// now on, and goes on owning those that it had; a filter may stand here several times and in other tags
    /// too. Null pointers are left out. Without memory nothing changes, and the new ones stay the caller's.
    void SetStaticEffectVector(const std::vector<VXFlintFilter*>& filters);
    /// What a dump would write. The filters stay the tag's.
    std::vector<VXFlintFilter*> GetStaticEffectVector() const;

    short HasImage = 0;
    short HasClassName = 0;
    short HasCacheAsBitmap = 0;  ///< a flag alone
    short HasBlendMode = 0;
    short HasFilterList = 0;
    unsigned int CharacterIdOffset = 0;  ///< in `RawBody`; 0 for not there, as with `ClipDepthOffset`
    unsigned int ClipDepthOffset = 0;
    VXString ClassName;
    VXByteView RawBody;  ///< the whole body as loaded; empty for a tag built by code

private:
    friend class VXSwfTagFactory;
    explicit VXSwfPlaceObject3Tag(enuTagType type);
    VXErrorCodeEnum DumpFilters(VXBitStream& body) const;
    void PatchRawBody(unsigned int offset, unsigned short value);

    struct Effects {
        std::vector<VXHeld<VXFlintFilter>> current;
        std::vector<VXHeld<VXFlintFilter>> replaced;  // a host may still have their addresses
    };
    VXOnDemand<Effects> StaticEffects;
};
