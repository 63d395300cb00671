#include "platform/GetVXBndAddressProc.h"

#include <string_view>

#ifdef VX_HAVE_TYPE_ENGINE
#include "platform/typeengine/VXTypeEngineAPI.h"
#endif

namespace {

VXBndProc FindProcedure(const char* name) {
    if (name == nullptr) return nullptr;
#ifdef VX_HAVE_TYPE_ENGINE
    struct Entry {
        std::string_view name;
        VXBndProc procedure;
    };
#define VX_ENTRY(procedure) {#procedure, reinterpret_cast<VXBndProc>(&procedure)},
    static const Entry kProcedures[] = {VX_TYPE_ENGINE_PROCEDURES(VX_ENTRY)};
#undef VX_ENTRY
    for (const Entry& entry : kProcedures) {
        if (entry.name == name) return entry.procedure;
    }
#endif
    return nullptr;
}

}  // namespace

VXBndAddressProc GetVXBndAddressProc() { return &FindProcedure; }
