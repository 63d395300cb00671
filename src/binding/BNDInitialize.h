#pragma once

#include "platform/GetVXBndAddressProc.h"

/// Looks up every procedure of the type engine by name, so that the functions of `BND_NT_NMT` reach it. A
/// null procedure finds nothing; a name that it does not find stays null, and what needs it then answers as
/// for an empty handle. Repeating the call with the same procedure changes nothing, and one with another
/// procedure ends what the former reached before it looks anything up.
VXSWF_API void BNDInitialize(VXBndAddressProc procedure);

/// Shuts the engine down and forgets its procedures. Wrappers that are still held hold stale handles from now
/// on; copies of them are empty, and their end does nothing. Without a `BNDInitialize` before it, nothing
/// happens.
VXSWF_API void BNDTerminate();
