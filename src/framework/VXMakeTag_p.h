#pragma once

#include <memory>

#include "framework/VXSwfTag.h"

/// A tag for building by code, as the class that its type has; null when the factory gives it another.
template <typename Tag>
std::unique_ptr<Tag> VXMakeTag(VXSwfTagFactory::enuTagType type) {
    VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(type, 0, 0);
    auto* made = dynamic_cast<Tag*>(tag);
    if (made == nullptr) VXSwfTagFactory::DeleteTag(tag);
    return std::unique_ptr<Tag>(made);
}
