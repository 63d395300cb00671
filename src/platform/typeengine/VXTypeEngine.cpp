#include "platform/typeengine/VXTypeEngine_p.h"

#include <algorithm>

constexpr TYErrorRecord kVXBadHandle{kTYBadHandle,
                                     "no handle, or one of another kind, or one that has gone stale"};
constexpr TYErrorRecord kVXBadParameter{kTYBadParameter, "an address is null, or a value is out of range"};
constexpr TYErrorRecord kVXBadFont{kTYBadFont, "the font cannot be read, or lacks what was asked for"};
constexpr TYErrorRecord kVXOutOfMemory{kTYOutOfMemory, "out of memory"};

namespace {

constinit VXTypeEngine* g_Engine = nullptr;

constexpr std::size_t kMostSpareEntries = 1 << 16;

}  // namespace

VXTypeEngine& VXTypeEngine::Get() {
    if (g_Engine == nullptr) g_Engine = new VXTypeEngine;
    return *g_Engine;
}

VXTypeEngine* VXTypeEngine::Find() { return g_Engine; }

void VXTypeEngine::Terminate() { delete std::exchange(g_Engine, nullptr); }

std::shared_ptr<const VXFontList> VXTypeEngine::GetFonts() {
    if (m_Fonts == nullptr) m_Fonts = VXFontList::Load();
    return m_Fonts;
}

VXPathObject::~VXPathObject() {
    VXTypeEngine* engine = VXTypeEngine::Find();
    if (engine == nullptr || entries.kinds.capacity() > kMostSpareEntries) return;
    entries.kinds.clear();
    entries.points.clear();
    engine->sparePath = std::move(entries);
}

extern "C" {

std::int32_t TYBaseAddRefProc(TYHandle handle) {
    VXTypeEngine* engine = VXTypeEngine::Find();
    return engine != nullptr && engine->handles.AddRef(handle) ? 1 : 0;
}

TYError TYBaseReleaseProc(TYHandle handle) {
    VXTypeEngine* engine = VXTypeEngine::Find();
    return engine != nullptr && engine->handles.Release(handle) ? nullptr : &kVXBadHandle;
}

void TYTerminateProc() { VXTypeEngine::Terminate(); }

std::int32_t TYTestLiveHandleCount() {
    const VXTypeEngine* engine = VXTypeEngine::Find();
    return engine == nullptr ? 0 : static_cast<std::int32_t>(engine->handles.GetLiveCount());
}

GFMSharedBezierPath GFMNewSharedBezierPathProc(std::int32_t capacity, std::int32_t) {
    // Entries that are promised and never come cost no memory beyond this many.
    constexpr std::int32_t kMaxCapacity = 1 << 16;
    GFMSharedBezierPath out{};
    const TYError error = VXRunStep([&](VXTypeEngine& engine) {
        auto path = std::make_unique<VXPathObject>(std::move(engine.sparePath));
        // One at least: a path has arrays also when it is empty.
        const auto room = static_cast<std::size_t>(std::clamp(capacity, 1, kMaxCapacity));
        path->entries.kinds.reserve(room);
        path->entries.points.reserve(room * 2);
        return engine.Add(std::move(path), &out);
    });
    return error == nullptr ? out : GFMSharedBezierPath{};
}

TYError GFMSharedBezierPathGetStateProc(GFMSharedBezierPath path, std::uint32_t* count, float** points,
                                        KVMPointType** kinds) {
    VXClear(count);
    VXClear(points);
    VXClear(kinds);
    return VXWith<VXPathObject>(path, [&](VXTypeEngine&, VXPathObject& object) -> TYError {
        if (count != nullptr) *count = static_cast<std::uint32_t>(object.entries.kinds.size());
        if (points != nullptr) *points = object.entries.points.data();
        if (kinds != nullptr) *kinds = object.entries.kinds.data();
        return nullptr;
    });
}

}  // extern "C"
