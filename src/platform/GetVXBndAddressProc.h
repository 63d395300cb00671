#pragma once

#include "platform/VXExport.h"

/// A procedure of the host's closed libraries, before it is cast to the type that its declaration gives it.
using VXBndProc = void (*)();

/// Finds a procedure by its name; null for a name that it does not know, and for a null name.
using VXBndAddressProc = VXBndProc (*)(const char* name);

/// The one way to the type engine and its path buffer: what `platform/typeengine/VXTypeEngineAPI.h` declares
/// is found by name through the procedure returned, and never by linking. A library built without the engine
/// still returns a procedure, one that knows no name.
VXPLATFORM_API VXBndAddressProc GetVXBndAddressProc();
