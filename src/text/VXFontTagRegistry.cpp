#include "text/VXFontTagRegistry_p.h"

#include <mutex>
#include <unordered_map>

namespace {

struct Registry {
    std::mutex mutex;
    std::unordered_map<const VXSwfDefineFont2Tag*, unsigned long long> serials;
    unsigned long long last = VXFontTagRegistry::kNone;
};

// Never destroyed: a host may delete its movies while the process exits.
Registry& GetRegistry() {
    static Registry& registry = *new Registry;
    return registry;
}

}  // namespace

void VXFontTagRegistry::Add(const VXSwfDefineFont2Tag* tag) {
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.serials[tag] = ++registry.last;
}

void VXFontTagRegistry::Remove(const VXSwfDefineFont2Tag* tag) noexcept {
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.serials.erase(tag);
}

unsigned long long VXFontTagRegistry::GetSerial(const VXSwfDefineFont2Tag* tag) {
    if (tag == nullptr) return kNone;
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.serials.find(tag);
    return found == registry.serials.end() ? kNone : found->second;
}
