#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "MovieBytes.h"
#include "vxswf.h"

using Json = nlohmann::ordered_json;

/// A loaded tag as it came: what was parsed has kept its bytes. Of the body of a character no more is there
/// than its fields take.
class LoadedTag {
public:
    explicit LoadedTag(VXSwfTag& tag);
    LoadedTag(const LoadedTag&) = delete;
    LoadedTag& operator=(const LoadedTag&) = delete;

    const FramedTag* operator->() const { return &m_Tag; }
    const FramedTag& operator*() const { return m_Tag; }

private:
    std::vector<unsigned char> m_Head;
    FramedTag m_Tag;
};

/// What the body says of a tag, under the names that the manual page tells: IDs, depths, names, labels,
/// rectangles in pixels.
Json DescribeTag(const FramedTag& tag);

/// "shapes", "pictures" and the like.
const char* KindOfTagType(unsigned int type);
