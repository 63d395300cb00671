#include "kit/VXScriptReplacer.h"

#include <new>
#include <set>
#include <typeinfo>
#include <utility>

#include "kit/VXScriptBytes_p.h"
#include "scripting/VXSwfActionRecordContainer.h"
#include "timeline/VXSwfDefineButton2Tag.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "timeline/VXSwfPlaceObject3Tag.h"

namespace {

constexpr unsigned char kFirstVersionWith32 = 6;  // events
constexpr unsigned int kMostErrors = 10;

VXBitStream Over(const std::string& bytes) {
    VXBitStream stream;
    stream.LoadFromAllocedMem(reinterpret_cast<const unsigned char*>(bytes.data()),
                              static_cast<unsigned int>(bytes.size()));
    return stream;
}

std::string BytesOf(const unsigned char* bytes, unsigned int size) {
    return size == 0 ? std::string() : std::string(reinterpret_cast<const char*>(bytes), size);
}

VXByteBlock BlockOf(const std::string& bytes) {
    return VXByteBlock::CopyOf(reinterpret_cast<const unsigned char*>(bytes.data()),
                               static_cast<unsigned int>(bytes.size()));
}

}  // namespace

class VXScriptReplacer::Walk {
public:
    Walk(const VXString& from, const VXString& to, unsigned char version)
        : m_Edit{.from = from.GetUTF8String(), .to = to.GetUTF8String(), .version = version} {}

    void Visit(const VXSwfTagSet& set) {
        for (VXSwfTag* tag : set) {
            if (tag == nullptr) continue;
            Visit(*tag);
            if (m_Edit.errorText.empty()) continue;
            if (m_NumErrors++ < kMostErrors) {
                VXString name;
                tag->GetTextInfo(name);
                m_Errors += (m_Errors.empty() ? "" : "\n") + name.GetUTF8String() + ": " + m_Edit.errorText;
            }
            m_Edit.errorText.clear();
        }
    }
    unsigned int GetCount() const { return m_Edit.hits; }
    const std::string& GetErrors() const { return m_Errors; }

private:
    void Visit(VXSwfTag& tag) {
        if (typeid(tag) == typeid(VXSwfTag)) {
            VisitCarried(tag);
        } else if (auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(&tag)) {
            Visit(static_cast<const VXSwfTagSet&>(*sprite));
        } else if (auto* script = dynamic_cast<VXSwfScriptTag*>(&tag)) {
            Visit(script->m_ActionRecords);
        } else if (auto* button = dynamic_cast<VXSwfDefineButton2Tag*>(&tag)) {
            for (VXFlintButtonCondAction* action : button->ButtonActions)
                if (action != nullptr) Visit(action->Actions);
        } else if (auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(&tag)) {
            Visit(*placement);
        }
    }

    /// Gives the tag a new body by a load, with the form of header that it had.
    void VisitCarried(VXSwfTag& tag) {
        VXBitStream in = tag.GetDataStream();
        std::string body = BytesOf(in.GetBuffer(), in.GetSize());
        if (!m_Edit.EditBody(tag.GetTagType(), body)) return;
        constexpr unsigned int kLongLength = 63;
        const bool isLong = tag.IsLongTag() != 0 || body.size() >= kLongLength;
        const auto size = static_cast<unsigned int>(body.size());
        VXBitStream wire;
        VXIgnore(wire.WriteWord(
            static_cast<unsigned short>(tag.GetTagType() << 6 | (isLong ? kLongLength : size))));
        if (isLong) VXIgnore(wire.WriteDWord(size));
        VXIgnore(wire.Write(body.data(), size));
        wire.SetPosition(0);
        if (wire.HasFailed() || tag.LoadFromStream(wire) != kVXSuccess) throw std::bad_alloc();
    }

    /// Answers the bytes that the script takes now, or 0 when it did not change.
    unsigned int Visit(VXFlintActionRecords& actions) {
        if (actions.empty()) return 0;
        VXBitStream out;
        VXIgnore(actions.DumpToStream(out));  // memory takes everything
        std::string bytes = BytesOf(out.GetBuffer(), out.GetSize());
        if (!m_Edit.EditScript(bytes)) return 0;
        VXFlintActionRecords changed;
        VXBitStream in = Over(bytes);
        VXIgnore(changed.LoadFromStream(in));  // it has its end
        actions = std::move(changed);
        return static_cast<unsigned int>(bytes.size());
    }

    void Visit(VXSwfPlaceObject2Tag& placement) {
        if (placement.RawClipActions) {
            std::string bytes =
                BytesOf(placement.RawClipActions.GetBytes(), placement.RawClipActions.GetSize());
            if (m_Edit.EditEvents(bytes, 0, kFirstVersionWith32)) placement.RawClipActions = BlockOf(bytes);
            return;
        }
        if (auto* later = dynamic_cast<VXSwfPlaceObject3Tag*>(&placement);
            later != nullptr && later->RawBody) {
            std::string bytes = BytesOf(later->RawBody.GetBytes(), later->RawBody.GetSize());
            if (m_Edit.EditBody(later->GetTagType(), bytes)) later->RawBody = VXByteView(BlockOf(bytes));
            return;
        }
        if (placement.GetClipActions().IsNonEmpty() == 0) return;
        for (VXFlintClipActionRecord* event : placement.EditClipActions().ClipActionRecords) {
            if (event == nullptr || !m_VisitedEvents.insert(event).second) continue;
            const unsigned int size = Visit(event->Actions);
            if (size != 0)
                event->ActionRecordSize = size + (event->EventFlags.ClipEventKeyPress != 0 ? 1 : 0);
        }
    }

    VXScriptEdit m_Edit;
    std::string m_Errors;
    unsigned int m_NumErrors = 0;
    std::set<const VXFlintClipActionRecord*> m_VisitedEvents;  // copies of a placement share them
};

VXScriptReplacer::VXScriptReplacer() = default;
VXScriptReplacer::~VXScriptReplacer() = default;

VXErrorCodeEnum VXScriptReplacer::ReplaceString(VXFlintFile& movie, const VXString& from,
                                                const VXString& to) {
    m_Count = 0;
    m_ErrorText.clear();
    if (from.empty()) return kVXSuccess;
    Walk walk(from, to, movie.GetFlintVersion());
    walk.Visit(movie);
    m_Count = walk.GetCount();
    m_ErrorText = walk.GetErrors();
    return m_ErrorText.empty() ? kVXSuccess : kVXFailure;
}
