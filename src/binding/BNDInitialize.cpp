#include "binding/BNDInitialize.h"

#include "binding/BNDTable_p.h"

constinit BNDTable g_BNDTable;

namespace {

constinit VXBndAddressProc g_Procedure = nullptr;

}  // namespace

void BNDInitialize(VXBndAddressProc procedure) {
    if (procedure == g_Procedure) return;
    BNDTerminate();
    g_Procedure = procedure;
    if (procedure == nullptr) return;
#define VX_RESOLVE(name) g_BNDTable.name = reinterpret_cast<decltype(g_BNDTable.name)>(procedure(#name));
    VX_TYPE_ENGINE_PROCEDURES(VX_RESOLVE)
#undef VX_RESOLVE
}

void BNDTerminate() {
    if (g_BNDTable.TYTerminateProc != nullptr) g_BNDTable.TYTerminateProc();
    g_BNDTable = {};
    g_Procedure = nullptr;
}
