#pragma once

#include "framework/VXSwfControlTag.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"
#include "memory/VXByteBlock.h"
#include "memory/VXOnDemand.h"
#include "platform/VXString.h"
#include "timeline/VXFlintClipActions.h"
#include "timeline/VXPackedMatrix.h"

class VXSizeNPositionData;

/// Puts a character on the display list, or changes what stands there.
///
///     type 26:  HasClipActions ub[1], HasClipDepth ub[1], HasName ub[1], HasRatio ub[1],
///               HasColorTransform ub[1], HasMatrix ub[1], HasCharacter ub[1], Move ub[1]
///               Depth u16
///               CharacterId u16                  when HasCharacter
///               Matrix VXFlintMatrix             when HasMatrix
///               CxForm VXFlintCxForm             when HasColorTransform
///               Ratio u16                        when HasRatio
///               Name str                         when HasName
///               ClipDepth u16                    when HasClipDepth
///               ClipActions VXFlintClipActions   when HasClipActions
///
/// From version 6 on, clip actions are carried as the bytes that they were and not parsed. They do not survive
/// `Copy`, which takes them for those of an older version. Every dump takes the long header.
///
/// Placements come by the hundred thousand: colour transform and clip actions take memory once they are loaded
/// or asked for in order to be changed, and reading them takes none.
class VXSWF_API VXSwfPlaceObject2Tag : public VXSwfControlTag {
public:
    // Copies share the handlers of `ClipActions` and the raw bytes.
    VXSwfPlaceObject2Tag(const VXSwfPlaceObject2Tag&) = default;
    VXSwfPlaceObject2Tag& operator=(const VXSwfPlaceObject2Tag&) = default;

    // The virtual operations stand in slot order; `SetDepth` adds the eighteenth.

    /// Regenerates header and body. Sets `HasCharacter` for a character other than 0 and `HasClipActions`
    /// when `ClipActions` has a handler, and makes `HasName` tell whether there is a name.
    ///
    /// Kept: no flag but `HasName` is ever cleared, and no other is worked out.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// The character that is placed, or 0.
    unsigned short GetReferencedID() const override;
    /// Leaves `HasCharacter` to the dump.
    void SetReferencedID(unsigned short id) override;
    ~VXSwfPlaceObject2Tag() override;
    /// Kept: the label "=NRotateBits", translations that are divided by 20 once more, and 16.16 numbers whose
    /// whole part is divided by 65535.
    void GetTextInfo(VXString& text) override;
    /// Fails with the code of the first read that does; fields read by then keep their new values.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;
    /// With a non-zero `adjustClip` the clip depth moves by as much as the depth, in 16 bits, whether or not
    /// `HasClipDepth` is set.
    virtual void SetDepth(unsigned short depth, short adjustClip);

    /// Higher depths cover lower ones.
    unsigned short GetDepth() const { return Depth; }
    void SetMoveFlag(short move) { Move = move; }
    /// Sets `HasMatrix`.
    void SetMatrix(const VXFlintMatrix& matrix);
    /// The matrix, whatever `HasMatrix` says.
    VXFlintMatrix GetMatrix() const {
        return HasUnusualMatrix() ? Extras.Read().UnusualMatrix.Read() : Matrix.Get();
    }
    /// Copies every field, `HasAlpha` included.
    ///
    /// Kept: null sets `HasColorTransform` too and leaves the transform as it is.
    void SetCxForm(const VXFlintCxForm* cxForm);
    const VXFlintCxForm& GetCxForm() const { return Extras.Read().CxForm; }
    /// Takes memory for the transform at the first call; does not touch `HasColorTransform`.
    VXFlintCxForm& EditCxForm() { return Extras.Edit().CxForm; }
    /// Multiplies alpha by `alpha` / 256 and leaves the colours as they are, and the add terms too.
    void SetAlpha(unsigned int alpha);
    /// Depths up to this one are masked by the character. 0 clears `HasClipDepth`, any other sets it.
    void SetClipDepth(unsigned short depth);
    /// Name by which scripts find the object. An empty one changes nothing.
    void SetName(const VXString& name);
    /// Leaves `name` as it is while `HasName` is clear.
    void GetName(VXString& name) const;
    /// The name, whatever `HasName` says.
    const VXString& GetName() const { return Name; }
    short GetHasName() const { return HasName; }
    const VXFlintClipActions& GetClipActions() const { return Extras.Read().ClipActions.Read(); }
    /// Takes memory for them at the first call; does not touch `HasClipActions`.
    VXFlintClipActions& EditClipActions() { return Extras.Edit().ClipActions.Edit(); }

    /// Resizes the object about its own origin by the quotients of new and old extents; an extent that stays
    /// counts as a factor of 1. The position stays. Sets `HasMatrix` and all widths of the matrix to 32.
    ///
    /// Kept: the quotients have single precision. An old extent of 0 saturates what is not 0 itself.
    void Scale(unsigned int oldWidth, unsigned int newWidth, unsigned int oldHeight, unsigned int newHeight);
    /// The same with the two extents of each, cut to whole pixels.
    void Scale(const VXSizeNPositionData& oldData, const VXSizeNPositionData& newData);

    short HasClipActions = 0;
    short HasClipDepth = 0;
    short HasRatio = 0;
    short HasColorTransform = 0;
    short HasMatrix = 0;
    short HasCharacter = 0;
    short Move = 0;            ///< changes the object at `Depth`
    unsigned short Ratio = 0;  ///< place between the two ends of a morph shape
    unsigned short ClipDepth = 0;

protected:
    explicit VXSwfPlaceObject2Tag(enuTagType type);

    /// The first byte of flags, for both types. Which field takes the bit of the name differs.
    void TakeFlags(unsigned char flags, short& nameFlag);
    unsigned char GetFlags() const;
    /// Matrix, colour transform, ratio and name, each under its flag.
    VXErrorCodeEnum LoadAppearance(VXBitStream& in);
    VXErrorCodeEnum DumpAppearance(VXBitStream& body);
    VXErrorCodeEnum DumpClipActions(VXBitStream& body) const;
    /// The flags that a dump works out.
    void DeriveFlags();

private:
    friend class VXSwfTagFactory;
    friend class VXSwfPlaceObject3Tag;
    /// What most placements do without.
    struct Rare {
        VXFlintCxForm CxForm;
        VXOnDemand<VXFlintMatrix> UnusualMatrix;  // in force when it is made
        VXOnDemand<VXFlintClipActions> ClipActions;
    };

    VXErrorCodeEnum DumpMatrix(VXBitStream& body);
    void StoreMatrix(const VXFlintMatrix& matrix);
    bool HasUnusualMatrix() const { return Extras.IsMade() && Extras.Read().UnusualMatrix.IsMade(); }

    short HasName = 0;
    unsigned short Depth = 0;
    unsigned short CharacterId = 0;
    VXPackedMatrix Matrix;
    VXString Name;
    VXOnDemand<Rare> Extras;

public:
    /// Clip actions of version 6 and later as read. While there are some, a dump writes them and not
    /// `ClipActions`.
    VXByteBlock RawClipActions;
};
