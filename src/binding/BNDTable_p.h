#pragma once

#include "platform/typeengine/VXTypeEngineAPI.h"

/// The procedures of the type engine as the binding found them, null where it did not.
struct BNDTable {
#define VX_MEMBER(procedure) decltype(&::procedure) procedure = nullptr;
    VX_TYPE_ENGINE_PROCEDURES(VX_MEMBER)
#undef VX_MEMBER
};

/// Never destroyed, so that wrappers in statics of any library may end whenever theirs are.
extern constinit BNDTable g_BNDTable;
