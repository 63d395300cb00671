#pragma once

#include "framework/VXSwfControlTag.h"

/// Lets a debugger attach to the movie, with an empty password.
///
///     type 64:  reserved u16, password str
///
/// Built by code only: in a loaded movie the type stays raw.
class VXSWF_API VXSwfEnableDebugger2Tag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfEnableDebugger2Tag() override;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfEnableDebugger2Tag(enuTagType type);
};
