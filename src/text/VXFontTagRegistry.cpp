#include "text/VXFontTagRegistry_p.h"

#include <unordered_map>

namespace {

/// Which tags exist, and whether each is shared. Never destroyed: a host may delete its movies while the
/// process exits.
auto& GetTags() {
    static auto& tags = *new std::unordered_map<const VXSwfDefineFont2Tag*, bool>;
    return tags;
}

}  // namespace

void VXFontTagRegistry::Add(const VXSwfDefineFont2Tag* tag) { GetTags().emplace(tag, false); }

void VXFontTagRegistry::Share(const VXSwfDefineFont2Tag* tag) { GetTags()[tag] = true; }

void VXFontTagRegistry::Remove(const VXSwfDefineFont2Tag* tag) noexcept { GetTags().erase(tag); }

bool VXFontTagRegistry::IsLive(const VXSwfDefineFont2Tag* tag) {
    // Texts without a font, as loads make them, belong to any thread.
    return tag != nullptr && GetTags().contains(tag);
}

bool VXFontTagRegistry::IsShared(const VXSwfDefineFont2Tag* tag) {
    const auto found = GetTags().find(tag);
    return found != GetTags().end() && found->second;
}
