#pragma once

#include "platform/VXExport.h"

class VXSwfTag;

/// What takes tags: a movie or a sprite.
class VXSWF_API IVXSwfTagHolder {
public:
    virtual ~IVXSwfTagHolder() = default;
    /// Takes over `tag`, which is gone when there is no memory for it, and puts it before the end of frame
    /// `frame`: 1 and up count ShowFrame tags, 0 is the very start, −1 the very end.
    virtual void IncludeTag(VXSwfTag* tag, int frame) = 0;
};
