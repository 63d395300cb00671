#include "timeline/VXSwfPlaceObject2Tag.h"

#include <string>

#include "graphics/VXTwips.h"
#include "platform/VXSizeNPositionData.h"

// The dearest line of a timeline of a million placements.
static_assert(sizeof(void*) != 8 || sizeof(VXSwfPlaceObject2Tag) <= 120);

namespace {

constexpr unsigned char kFirstVersionWithRawActions = 6;

short BitOf(unsigned char flags, int bit) { return static_cast<short>(flags >> bit & 1); }

unsigned int BitAt(int bit, short flag) { return flag != 0 ? 1u << bit : 0u; }

double FactorOf(unsigned int oldExtent, unsigned int newExtent) {
    if (oldExtent == newExtent) return 1.0;
    const float factor = static_cast<float>(newExtent) / static_cast<float>(oldExtent);
    return factor;
}

}  // namespace

VXSwfPlaceObject2Tag::VXSwfPlaceObject2Tag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfPlaceObject2Tag::~VXSwfPlaceObject2Tag() = default;

void VXSwfPlaceObject2Tag::TakeFlags(unsigned char flags, short& nameFlag) {
    HasClipActions = BitOf(flags, 7);
    HasClipDepth = BitOf(flags, 6);
    nameFlag = BitOf(flags, 5);
    HasRatio = BitOf(flags, 4);
    HasColorTransform = BitOf(flags, 3);
    HasMatrix = BitOf(flags, 2);
    HasCharacter = BitOf(flags, 1);
    Move = BitOf(flags, 0);
}

unsigned char VXSwfPlaceObject2Tag::GetFlags() const {
    return static_cast<unsigned char>(BitAt(7, HasClipActions) |     //
                                      BitAt(6, HasClipDepth) |       //
                                      BitAt(5, HasName) |            //
                                      BitAt(4, HasRatio) |           //
                                      BitAt(3, HasColorTransform) |  //
                                      BitAt(2, HasMatrix) |          //
                                      BitAt(1, HasCharacter) |       //
                                      BitAt(0, Move));
}

void VXSwfPlaceObject2Tag::DeriveFlags() {
    if (CharacterId != 0) HasCharacter = 1;
    HasName = Name.empty() ? 0 : 1;
    if (GetClipActions().IsNonEmpty() != 0) HasClipActions = 1;
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::LoadDataFromStream(VXBitStream& in) {
    unsigned char flags = 0;
    VX_RETURN_IF_FAILED(in.ReadByte(flags));
    TakeFlags(flags, HasName);
    VX_RETURN_IF_FAILED(in.ReadWord(Depth));
    if (HasCharacter != 0) VX_RETURN_IF_FAILED(in.ReadWord(CharacterId));
    VX_RETURN_IF_FAILED(LoadAppearance(in));
    if (HasClipDepth != 0) VX_RETURN_IF_FAILED(in.ReadWord(ClipDepth));
    if (HasClipActions == 0) return kVXSuccess;
    if (GetFLVersion() < kFirstVersionWithRawActions) {
        return EditClipActions().LoadFromStream(in, GetFLVersion());
    }
    unsigned int size = in.GetRemaining();
    RawClipActions = VXByteBlock::Allocate(size);
    return size == 0 ? kVXSuccess : in.Read(RawClipActions.GetBytes(), size);
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::DumpToStream(VXBitStream& out) {
    SetIsLongTag(1);
    DeriveFlags();
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteByte(GetFlags()));
        VX_RETURN_IF_FAILED(body.WriteWord(Depth));
        if (HasCharacter != 0) VX_RETURN_IF_FAILED(body.WriteWord(CharacterId));
        VX_RETURN_IF_FAILED(DumpAppearance(body));
        if (HasClipDepth != 0) VX_RETURN_IF_FAILED(body.WriteWord(ClipDepth));
        return DumpClipActions(body);
    });
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::LoadAppearance(VXBitStream& in) {
    if (HasMatrix != 0) {
        VXFlintMatrix matrix = GetMatrix();
        const VXErrorCodeEnum result = matrix.LoadFromStream(in);
        StoreMatrix(matrix);
        VX_RETURN_IF_FAILED(result);
    }
    if (HasColorTransform != 0) VX_RETURN_IF_FAILED(EditCxForm().LoadFromStream(in));
    if (HasRatio != 0) VX_RETURN_IF_FAILED(in.ReadWord(Ratio));
    return HasName != 0 ? in.ReadVXString(Name) : kVXSuccess;
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::DumpAppearance(VXBitStream& body) {
    if (HasMatrix != 0) VX_RETURN_IF_FAILED(DumpMatrix(body));
    if (HasColorTransform != 0) VX_RETURN_IF_FAILED(GetCxForm().DumpToStream(body));
    if (HasRatio != 0) VX_RETURN_IF_FAILED(body.WriteWord(Ratio));
    return HasName != 0 ? body.WriteVXString(Name) : kVXSuccess;
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::DumpMatrix(VXBitStream& body) {
    if (HasUnusualMatrix()) return Extras.Edit().UnusualMatrix.Edit().DumpToStream(body);
    VXFlintMatrix matrix = Matrix.Get();
    const VXErrorCodeEnum result = matrix.DumpToStream(body);
    Matrix.SetWidths(matrix);
    return result;
}

VXErrorCodeEnum VXSwfPlaceObject2Tag::DumpClipActions(VXBitStream& body) const {
    if (HasClipActions == 0) return kVXSuccess;
    if (!RawClipActions) return GetClipActions().DumpToStream(body);
    return body.Write(RawClipActions.GetBytes(), RawClipActions.GetSize());
}

unsigned short VXSwfPlaceObject2Tag::GetReferencedID() const { return CharacterId; }

void VXSwfPlaceObject2Tag::SetReferencedID(unsigned short id) { CharacterId = id; }

void VXSwfPlaceObject2Tag::SetDepth(unsigned short depth, short adjustClip) {
    if (adjustClip != 0) ClipDepth = static_cast<unsigned short>(ClipDepth + depth - Depth);
    Depth = depth;
}

void VXSwfPlaceObject2Tag::StoreMatrix(const VXFlintMatrix& matrix) {
    if (!Matrix.Set(matrix)) {
        Extras.Edit().UnusualMatrix.Edit() = matrix;
    } else if (Extras.IsMade()) {
        Extras.Edit().UnusualMatrix.Reset();
    }
}

void VXSwfPlaceObject2Tag::SetMatrix(const VXFlintMatrix& matrix) {
    StoreMatrix(matrix);
    HasMatrix = 1;
}

void VXSwfPlaceObject2Tag::SetCxForm(const VXFlintCxForm* cxForm) {
    HasColorTransform = 1;
    if (cxForm != nullptr) EditCxForm() = *cxForm;
}

void VXSwfPlaceObject2Tag::SetAlpha(unsigned int alpha) {
    VXFlintCxForm& cxForm = EditCxForm();
    HasColorTransform = 1;
    cxForm.HasMultTerms = 1;
    cxForm.RedMultTerm = 256;
    cxForm.GreenMultTerm = 256;
    cxForm.BlueMultTerm = 256;
    cxForm.AlphaMultTerm = static_cast<int>(alpha);
}

void VXSwfPlaceObject2Tag::SetClipDepth(unsigned short depth) {
    ClipDepth = depth;
    HasClipDepth = depth != 0 ? 1 : 0;
}

void VXSwfPlaceObject2Tag::SetName(const VXString& name) {
    if (name.empty()) return;
    Name = name;
    HasName = 1;
}

void VXSwfPlaceObject2Tag::GetName(VXString& name) const {
    if (HasName != 0) name = Name;
}

void VXSwfPlaceObject2Tag::Scale(unsigned int oldWidth, unsigned int newWidth, unsigned int oldHeight,
                                 unsigned int newHeight) {
    VXFlintMatrix matrix = GetMatrix();
    const VXReal x = matrix.TranslateX;
    const VXReal y = matrix.TranslateY;
    matrix.TranslateX = 0.0;
    matrix.TranslateY = 0.0;
    matrix.Scale(FactorOf(oldWidth, newWidth), FactorOf(oldHeight, newHeight));
    matrix.TranslateX = x;
    matrix.TranslateY = y;
    matrix.NTranslateBits = 32;
    StoreMatrix(matrix);
    HasMatrix = 1;
}

void VXSwfPlaceObject2Tag::Scale(const VXSizeNPositionData& oldData, const VXSizeNPositionData& newData) {
    Scale(VXTruncateToUnsigned(oldData.GetXExtent()), VXTruncateToUnsigned(newData.GetXExtent()),
          VXTruncateToUnsigned(oldData.GetYExtent()), VXTruncateToUnsigned(newData.GetYExtent()));
}

namespace {

void Append(std::string& text, const char* label, long long value) {
    text += label;
    text += std::to_string(value);
}

void AppendFixed(std::string& text, const char* label, int value) {
    const auto bits = static_cast<unsigned int>(value);
    Append(text, label, (bits & 0xFFFF0000u) / 65535u);
    Append(text, ".", bits & 0xFFFFu);
}

void AppendMatrix(std::string& text, const VXFlintMatrix& matrix) {
    if (matrix.HasScale == 0) {
        text += " - No Scale";
    } else {
        Append(text, " - NScaleBits=", matrix.NScaleBits);
        AppendFixed(text, " - ScaleX=", matrix.ScaleX);
        AppendFixed(text, " - ScaleY=", matrix.ScaleY);
    }
    if (matrix.HasRotate == 0) {
        text += " - No R";
    } else {
        Append(text, " - =NRotateBits", matrix.NRotateBits);
        AppendFixed(text, " - RotateSkew0=", matrix.RotateSkew0);
        AppendFixed(text, " - RotateSkew1=", matrix.RotateSkew1);
    }
    Append(text, " - TX(px)=", VXTruncate(matrix.TranslateX / kVXTwipsPerPixel));
    Append(text, " - TY(px)=", VXTruncate(matrix.TranslateY / kVXTwipsPerPixel));
}

void AppendCxForm(std::string& text, const VXFlintCxForm& cxForm) {
    if (cxForm.HasAddTerms == 0) {
        text += " - No cx Add ";
    } else {
        Append(text, " - RedAddTerm=", cxForm.RedAddTerm);
        Append(text, " - GreenAddTerm=", cxForm.GreenAddTerm);
        Append(text, " - BlueAddTerm=", cxForm.BlueAddTerm);
        Append(text, " - AlphaAddTerm=", cxForm.AlphaAddTerm);
    }
    if (cxForm.HasMultTerms == 0) {
        text += " - No cx Mult ";
    } else {
        Append(text, " - RedMultTerm=", cxForm.RedMultTerm);
        Append(text, " - GreenMultTerm=", cxForm.GreenMultTerm);
        Append(text, " - BlueMultTerm=", cxForm.BlueMultTerm);
        Append(text, " - AlphaMultTerm=", cxForm.AlphaMultTerm);
    }
}

void AppendEvents(std::string& text, const VXFlintClipEventFlags& flags) {
    if (flags.ClipEventKeyPress != 0) text += "bClipEventKeyPress";
    if (flags.ClipEventDragOut != 0) text += "bClipEventDragOut";
    if (flags.ClipEventDragOver != 0) text += "bClipEventDragOver";
    if (flags.ClipEventRollOut != 0) text += "bClipEventRollOut";
    if (flags.ClipEventRollOver != 0) text += "bClipEventRollOver";
    if (flags.ClipEventReleaseOutside != 0) text += "bClipEventReleaseOutside";
    if (flags.ClipEventRelease != 0) text += "bClipEventRelease";
    if (flags.ClipEventPress != 0) text += "bClipEventPress";
    if (flags.ClipEventInitialize != 0) text += "bClipEventInitialize";
    if (flags.ClipEventData != 0) text += "bClipEventData";
    if (flags.ClipEventKeyUp != 0) text += "bClipEventKeyUp";
    if (flags.ClipEventKeyDown != 0) text += "bClipEventKeyDown";
    if (flags.ClipEventMouseUp != 0) text += "bClipEventMouseUp";
    if (flags.ClipEventMouseDown != 0) text += "bClipEventMouseDown";
    if (flags.ClipEventMouseMove != 0) text += "bClipEventMouseMove";
    if (flags.ClipEventUnload != 0) text += "bClipEventUnload";
    if (flags.ClipEventEnterFrame != 0) text += "bClipEventEnterFrame";
    if (flags.ClipEventLoad != 0) text += "bClipEventLoad";
}

}  // namespace

void VXSwfPlaceObject2Tag::GetTextInfo(VXString& text) {
    VXSwfControlTag::GetTextInfo(text);
    std::string start;
    Append(start, " - wDepth=", Depth);
    if (HasMatrix == 0) {
        start += " - No Matrix ";
    } else {
        AppendMatrix(start, GetMatrix());
    }
    if (HasColorTransform == 0) {
        start += " - No Colorx";
    } else {
        AppendCxForm(start, GetCxForm());
    }
    text += start.c_str();
    if (!Name.empty()) {
        text += " - Name=";
        text += Name;
    }
    std::string rest;
    if (HasRatio == 0) {
        rest += " - No ratio ";
    } else {
        Append(rest, "Ratio =", Ratio);
    }
    if (HasClipDepth == 0) {
        rest += " - No ClipDepth ";
    } else {
        Append(rest, "ClipDepth =", ClipDepth);
    }
    if (HasClipActions == 0) {
        rest += "No actions";
    } else {
        AppendEvents(rest, GetClipActions().AllEventFlags);
    }
    text += rest.c_str();
}
