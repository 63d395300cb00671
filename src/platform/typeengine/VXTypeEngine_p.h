#pragma once

#include <memory>
#include <new>
#include <string>
#include <utility>

#include "platform/typeengine/VXFaceCache_p.h"
#include "platform/typeengine/VXFontList_p.h"
#include "platform/typeengine/VXHandleTable_p.h"
#include "platform/typeengine/VXOutline_p.h"
#include "platform/typeengine/VXTypeEngineAPI.h"

extern const TYErrorRecord kVXBadHandle;
extern const TYErrorRecord kVXBadParameter;
extern const TYErrorRecord kVXBadFont;
extern const TYErrorRecord kVXOutOfMemory;

/// All state of the engine. It is made by the first request that needs it and ended by `TYTerminateProc`
/// alone: a release that comes from a static's end finds it, or finds that it is gone.
class VXTypeEngine {
public:
    static VXTypeEngine& Get();
    /// Null while there is none.
    static VXTypeEngine* Find();
    static void Terminate();

    /// Counts a new object and writes its handle.
    template <class Handle>
    TYError Add(std::unique_ptr<VXEngineObject> object, Handle* out) {
        *out = static_cast<Handle>(handles.Add(std::move(object)));
        return *out == Handle{} ? &kVXOutOfMemory : nullptr;
    }
    /// The list, made at the first request.
    std::shared_ptr<const VXFontList> GetFonts();

    VXHandleTable handles;
    VXFaceCache faces;
    // Empty, with the room that the last text and the last path had: the next glyph needs it again.
    VXOutline spareOutline;
    VXPathEntries sparePath;

private:
    std::shared_ptr<const VXFontList> m_Fonts;
};

/// Runs a step of the engine for a caller who cannot be thrown at.
template <class Function>
TYError VXRunStep(Function step) {
    try {
        return step(VXTypeEngine::Get());
    } catch (const std::bad_alloc&) {
        return &kVXOutOfMemory;
    }
}

/// Clears `*out` unless `out` is null.
template <class Output>
void VXClear(Output* out) {
    if (out != nullptr) *out = {};
}

/// Runs a step on what `handle` stands for.
template <class Object, class Handle, class Function>
TYError VXWith(Handle handle, Function step) {
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        auto* object = engine.handles.Find<Object>(handle);
        return object == nullptr ? &kVXBadHandle : step(engine, *object);
    });
}

/// Answers what `get` finds in the object behind `handle`. `out` may be null.
template <class Object, class Handle, class Output, class Function>
TYError VXGet(Handle handle, Output* out, Function get) {
    VXClear(out);
    return VXWith<Object>(handle, [&](VXTypeEngine&, Object& object) -> TYError {
        if (out != nullptr) *out = static_cast<Output>(get(object));
        return nullptr;
    });
}

/// Answers a handle of what `make` makes of the object behind `handle`, which is null for a bad parameter.
template <class Object, class Handle, class Output, class Function>
TYError VXMake(Handle handle, Output* out, Function make) {
    VXClear(out);
    return VXWith<Object>(handle, [&](VXTypeEngine& engine, Object& object) -> TYError {
        if (out == nullptr) return &kVXBadParameter;
        std::unique_ptr<VXEngineObject> made = make(object);
        return made == nullptr ? &kVXBadParameter : engine.Add(std::move(made), out);
    });
}

/// A font without a size: one of the list, and what of its style is imitated.
struct VXFontChoice {
    std::shared_ptr<const VXFontRecord> record;
    bool isEmboldened = false;
    bool isSlanted = false;

    TYStyle GetStyle() const {
        return static_cast<TYStyle>(record->style | (isEmboldened ? kTYBold : kTYPlain) |
                                    (isSlanted ? kTYItalic : kTYPlain));
    }
};

// What handles stand for. Each keeps alive what it needs, so that the order of releases is free.

template <VXObjectKind Kind, class Value>
struct VXHolder : VXEngineObject {
    static constexpr VXObjectKind kKind = Kind;
    explicit VXHolder(Value held) : VXEngineObject(Kind), value(std::move(held)) {}
    Value value;
};
using VXFontSetObject = VXHolder<VXObjectKind::FontSet, std::shared_ptr<const VXFontList>>;
using VXFamilyListObject = VXHolder<VXObjectKind::FamilyList, std::shared_ptr<const VXFontList>>;
using VXFamilyObject = VXHolder<VXObjectKind::Family, std::shared_ptr<const VXFontFamily>>;
using VXFontDictObject = VXHolder<VXObjectKind::FontDict, VXFontChoice>;
using VXStringObject = VXHolder<VXObjectKind::String, std::string>;
using VXEncodingObject = VXHolder<VXObjectKind::Encoding, std::int32_t>;  ///< by its number

struct VXFontInstanceObject : VXEngineObject {
    static constexpr VXObjectKind kKind = VXObjectKind::FontInstance;
    VXFontInstanceObject(VXFontChoice choice, std::shared_ptr<VXFace> opened, const TYMatrix& given)
        : VXEngineObject(kKind), font(std::move(choice)), face(std::move(opened)), matrix(given) {}
    VXFontChoice font;
    std::shared_ptr<VXFace> face;  ///< never null
    TYMatrix matrix;
};

/// One glyph. Its outline is decoded when it is first asked for.
class VXTextObject : public VXEngineObject {
public:
    static constexpr VXObjectKind kKind = VXObjectKind::Text;
    VXTextObject(const VXFontInstanceObject& instance, TYGlyphID wanted, VXOutline&& room);
    ~VXTextObject() override;

    /// Null when the font file holds no sound outline for the glyph.
    const VXOutline* GetOutline();
    /// From the outline's units through the instance's matrix, then `matrix`.
    VXTransform GetTransform(const TYMatrix& matrix) const {
        return m_Transform.Then(VXTransform::Of(matrix));
    }

private:
    enum class State : unsigned char { Unread, Sound, Damaged };

    bool ReadOutline();

    std::shared_ptr<VXFace> m_Face;
    TYGlyphID m_Glyph;
    bool m_IsEmboldened;
    State m_State = State::Unread;
    VXTransform m_Transform;
    VXOutline m_Outline;
};

struct VXPathObject : VXEngineObject {
    static constexpr VXObjectKind kKind = VXObjectKind::Path;
    explicit VXPathObject(VXPathEntries&& room) : VXEngineObject(kKind), entries(std::move(room)) {}
    ~VXPathObject() override;
    VXPathEntries entries;
};
