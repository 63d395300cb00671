#include <cmath>
#include <cstring>
#include <limits>

#include "platform/typeengine/VXTypeEngine_p.h"

namespace {

/// What an imitated bold adds to the thickness of strokes, and to the advance.
constexpr int kBoldPartOfEm = 24;
/// What an imitated italic leans to the right for each unit upwards.
constexpr double kItalicSlant = 0.2125;
/// FreeType's outlines here, by `VXFace`.
constexpr double kOutlineUnitsPerUnit = 64.0;

TYError NewInstance(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding, TYFontInstance* out) {
    VXClear(out);
    return VXWith<VXFontDictObject>(
        font, [&](VXTypeEngine& engine, const VXFontDictObject& object) -> TYError {
            if (engine.handles.Find<VXEncodingObject>(encoding) == nullptr) return &kVXBadHandle;
            if (out == nullptr || matrix == nullptr) return &kVXBadParameter;
            std::shared_ptr<VXFace> face = engine.faces.Get(object.value.record);
            if (face == nullptr) return &kVXBadFont;
            return engine.Add(std::make_unique<VXFontInstanceObject>(object.value, std::move(face), *matrix),
                              out);
        });
}

/// The glyph of the character at `bytes`; false when they are not one character.
bool ReadCharacter(const VXFontInstanceObject& instance, const void* bytes, std::int32_t size,
                   TYGlyphID& glyph) {
    char16_t character = 0;
    if (bytes == nullptr || size != sizeof(character)) return false;
    std::memcpy(&character, bytes, sizeof(character));
    glyph = instance.face->GetGlyph(character);
    return true;
}

TYError NewText(TYFontInstance instance, const void* characters, std::int32_t size, std::int32_t* consumed,
                TYText* out) {
    VXClear(consumed);
    VXClear(out);
    using Instance = VXFontInstanceObject;
    return VXWith<Instance>(instance, [&](VXTypeEngine& engine, const Instance& object) -> TYError {
        TYGlyphID glyph = 0;
        if (out == nullptr || !ReadCharacter(object, characters, size, glyph)) return &kVXBadParameter;
        auto made = std::make_unique<VXTextObject>(object, glyph, std::move(engine.spareOutline));
        if (const TYError error = engine.Add(std::move(made), out)) return error;
        if (consumed != nullptr) *consumed = size;
        return nullptr;
    });
}

/// Runs `step` with a text's outline and the way to the caller's space.
template <class Function>
TYError WithOutline(TYText text, const TYMatrix* matrix, Function step) {
    return VXWith<VXTextObject>(text, [&](VXTypeEngine& engine, VXTextObject& object) -> TYError {
        if (matrix == nullptr) return &kVXBadParameter;
        const VXTransform transform = object.GetTransform(*matrix);
        if (!transform.IsFinite()) return &kVXBadParameter;
        const VXOutline* outline = object.GetOutline();
        return outline == nullptr ? &kVXBadFont : step(engine, *outline, transform);
    });
}

}  // namespace

VXTextObject::VXTextObject(const VXFontInstanceObject& instance, TYGlyphID wanted, VXOutline&& room)
    : VXEngineObject(kKind),
      m_Face(instance.face),
      m_Glyph(wanted),
      m_IsEmboldened(instance.font.isEmboldened),
      m_Outline(std::move(room)) {
    const double scale = 1.0 / (kOutlineUnitsPerUnit * m_Face->GetUnitsPerEm());
    const double slant = instance.font.isSlanted ? kItalicSlant : 0.0;
    // The font's y grows upwards.
    m_Transform =
        VXTransform{scale, 0.0, scale * slant, -scale, 0.0, 0.0}.Then(VXTransform::Of(instance.matrix));
}

VXTextObject::~VXTextObject() {
    VXTypeEngine* engine = VXTypeEngine::Find();
    if (engine == nullptr) return;
    m_Outline.Clear();
    engine->spareOutline = std::move(m_Outline);
}

const VXOutline* VXTextObject::GetOutline() {
    if (m_State == State::Unread) m_State = ReadOutline() ? State::Sound : State::Damaged;
    return m_State == State::Sound ? &m_Outline : nullptr;
}

bool VXTextObject::ReadOutline() {
    const FT_Face opened = m_Face->GetFace();
    if (FT_Load_Glyph(opened, m_Glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0) return false;
    // A glyph that is a picture has no outline.
    if (opened->glyph->format != FT_GLYPH_FORMAT_OUTLINE) return true;
    FT_Outline* loaded = &opened->glyph->outline;
    if (m_IsEmboldened) {
        const double strength = kOutlineUnitsPerUnit * m_Face->GetUnitsPerEm() / kBoldPartOfEm;
        // Fails for strokes without any area, which stay as thin as they are.
        static_cast<void>(FT_Outline_Embolden(loaded, std::lround(strength)));
    }
    return m_Outline.Load(*loaded);
}

extern "C" {

TYError TYEncodingNewFromPreDefEncodingProc(TYEncoding* out, std::int32_t number) {
    constexpr std::int32_t kNativeUTF16 = 13;
    VXClear(out);
    if (out == nullptr || number != kNativeUTF16) return &kVXBadParameter;
    return VXRunStep(
        [&](VXTypeEngine& engine) { return engine.Add(std::make_unique<VXEncodingObject>(number), out); });
}

TYError TYFontInstanceNewFontInstanceProcV3(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding,
                                            const TYDesignVector*, std::int32_t, TYFontInstance* out) {
    return NewInstance(font, matrix, encoding, out);
}

TYError TYFontInstanceNewFontInstanceProcV4(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding,
                                            const TYDesignVector*, std::int32_t, const TYDescriptor*,
                                            TYFontInstance* out) {
    return NewInstance(font, matrix, encoding, out);
}

TYError TYFontInstanceGetFontProc(TYFontInstance instance, TYFontDict* out) {
    return VXMake<VXFontInstanceObject>(instance, out, [](const VXFontInstanceObject& object) {
        return std::make_unique<VXFontDictObject>(object.font);
    });
}

TYError TYFontInstanceGetMatrixProc(TYFontInstance instance, TYMatrix* out) {
    if (out != nullptr) *out = {0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F};
    using Instance = VXFontInstanceObject;
    return VXWith<Instance>(instance, [out](VXTypeEngine&, const Instance& object) -> TYError {
        if (out != nullptr) *out = object.matrix;
        return nullptr;
    });
}

TYError TYFontInstanceGetGlyphIDProcV2(TYFontInstance instance, TYGlyphID* out, const void* character,
                                       std::int32_t size, std::int32_t* consumed, std::int32_t) {
    VXClear(out);
    VXClear(consumed);
    using Instance = VXFontInstanceObject;
    return VXWith<Instance>(instance, [&](VXTypeEngine&, const Instance& object) -> TYError {
        TYGlyphID glyph = 0;
        if (!ReadCharacter(object, character, size, glyph)) return &kVXBadParameter;
        if (out != nullptr) *out = glyph;
        if (consumed != nullptr) *consumed = size;
        return nullptr;
    });
}

TYError TYFontInstanceGetWidthProc(TYFontInstance instance, float* out, TYGlyphID glyph, std::int32_t,
                                   std::int32_t) {
    VXClear(out);
    using Instance = VXFontInstanceObject;
    return VXWith<Instance>(instance, [&](VXTypeEngine&, const Instance& object) -> TYError {
        double advance = 0.0;
        if (!object.face->GetAdvance(glyph, advance)) return &kVXBadFont;
        const bool grows =
            object.font.isEmboldened && advance != 0.0 && !FT_IS_FIXED_WIDTH(object.face->GetFace());
        if (grows) advance += 1.0 / kBoldPartOfEm;
        const double width = advance * object.matrix.a;
        if (!(std::abs(width) <= std::numeric_limits<float>::max())) return &kVXBadParameter;
        if (out != nullptr) *out = static_cast<float>(width);
        return nullptr;
    });
}

TYError TYNewTextFontInstanceCPProcV2(TYFontInstance instance, const void* characters, std::int32_t size,
                                      std::int32_t, std::int32_t* consumed, std::int32_t, TYText* out) {
    return NewText(instance, characters, size, consumed, out);
}

TYError TYNewTextFontInstanceCPProcV3(TYFontInstance instance, const void* characters, std::int32_t size,
                                      std::int32_t, std::int32_t* consumed, std::int32_t, const TYDescriptor*,
                                      TYText* out) {
    return NewText(instance, characters, size, consumed, out);
}

TYError TYTextGetBoundingBox(TYText text, const TYMatrix* matrix, TYBox* out) {
    VXClear(out);
    return WithOutline(
        text, matrix,
        [out](VXTypeEngine&, const VXOutline& outline, const VXTransform& transform) -> TYError {
            if (out != nullptr) *out = outline.GetBox(transform);
            return nullptr;
        });
}

TYError TYTextGetOutlines(TYText text, const TYMatrix* matrix, const TYBox*, std::int32_t,
                          GFMSharedBezierPath path, std::int32_t* ok) {
    VXClear(ok);
    return WithOutline(
        text, matrix,
        [&](VXTypeEngine& engine, const VXOutline& outline, const VXTransform& transform) -> TYError {
            auto* target = engine.handles.Find<VXPathObject>(path);
            if (target == nullptr) return &kVXBadHandle;
            if (outline.AppendTo(target->entries, transform) && ok != nullptr) *ok = 1;
            return nullptr;
        });
}

}  // extern "C"
