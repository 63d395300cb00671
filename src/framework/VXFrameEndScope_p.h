#pragma once

#include <memory>
#include <utility>

#include "framework/VXSwfTagSet.h"

/// Where one frame of a set ends, so that many tags that go there do not each walk to it. What may move the
/// end makes the set forget it.
struct VXSwfTagSet::FrameEnd {
    explicit FrameEnd(unsigned int ofFrame) : frame(ofFrame) {}

    unsigned int frame;
    TagIter place;
    bool isKnown = false;
};

/// Lets a set remember the end of a frame for as long as the scope lasts.
class VXSwfTagSet::FrameEndScope {
public:
    FrameEndScope(VXSwfTagSet& set, unsigned int frame)
        : m_Set(set), m_Around(std::exchange(set.m_FrameEnd, std::make_unique<FrameEnd>(frame))) {}
    ~FrameEndScope() {
        m_Set.m_FrameEnd = std::move(m_Around);
        m_Set.ForgetFrameEnd();
    }
    FrameEndScope(const FrameEndScope&) = delete;
    FrameEndScope& operator=(const FrameEndScope&) = delete;

private:
    VXSwfTagSet& m_Set;
    std::unique_ptr<FrameEnd> m_Around;  // of a call around this one
};
