#include "timeline/VXSwfDefineButton2Tag.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "framework/VXFlintIDMap.h"
#include "memory/VXMemoryLimit_p.h"

namespace {

// A few bytes of a script can lack 64 KB, so that a small movie becomes hundreds of megabytes in a dump. A body may
// lack 256 times its size; each byte beyond that counts as 16 in the memory of the load.
constexpr std::uint64_t kMostPerByte = 256;
constexpr std::size_t kPricePerByte = 16;

/// Zeros that a dump writes for the payload of an action that was cut short.
unsigned int BytesLacking(const VXFlintActionRecords& cutList) {
    if (cutList.empty()) return 0;
    const VXFlintActionRecord& last = **(cutList.end() - 1);
    return last.m_Length - std::min<unsigned int>(last.m_Length, last.m_ActionData.GetSize());
}

/// Writes a word that was not known in its place.
void Patch(VXBitStream& body, unsigned int position, unsigned int value) {
    const unsigned int end = body.GetPosition();
    VXFlintButtonCondAction::ResetOffset(body, static_cast<int>(position),
                                         static_cast<unsigned short>(value));
    body.SetPosition(end);
}

}  // namespace

VXSwfDefineButton2Tag::VXSwfDefineButton2Tag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineButton2Tag::VXSwfDefineButton2Tag(const VXSwfDefineButton2Tag& other)
    : VXSwfDefinitionTag(other),
      ReservedFlags(other.ReservedFlags),
      TrackAsMenu(other.TrackAsMenu),
      ActionOffset(other.ActionOffset),
      NextActionPos(other.NextActionPos),
      ButtonDependents(other.ButtonDependents) {
    CopyLists(other);
}

VXSwfDefineButton2Tag& VXSwfDefineButton2Tag::operator=(const VXSwfDefineButton2Tag& other) {
    if (this == &other) return *this;
    VXSwfDefinitionTag::operator=(other);
    ReservedFlags = other.ReservedFlags;
    TrackAsMenu = other.TrackAsMenu;
    ActionOffset = other.ActionOffset;
    NextActionPos = other.NextActionPos;
    ButtonDependents = other.ButtonDependents;
    ButtonRecords = {};
    ButtonActions = {};
    CopyLists(other);
    return *this;
}

VXSwfDefineButton2Tag::~VXSwfDefineButton2Tag() = default;

void VXSwfDefineButton2Tag::CopyLists(const VXSwfDefineButton2Tag& other) {
    for (const VXFlintButtonRecord* record : other.ButtonRecords) {
        if (record != nullptr) ButtonRecords.Add(std::make_unique<VXFlintButtonRecord>(*record));
    }
    for (const VXFlintButtonCondAction* action : other.ButtonActions) {
        if (action == nullptr) continue;
        auto copy = std::make_unique<VXFlintButtonCondAction>(*action);
        // Copies of a list share its actions; these are to be the copy's own.
        copy->Actions = VXFlintActionRecords();
        copy->Actions.Copy(action->Actions, 0);
        ButtonActions.Add(std::move(copy));
    }
}

VXErrorCodeEnum VXSwfDefineButton2Tag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadBits(7, ReservedFlags));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(TrackAsMenu));
    const unsigned int placeholder = in.GetPosition();
    VX_RETURN_IF_FAILED(in.ReadWord(ActionOffset));
    NextActionPos = ActionOffset == 0 ? 0 : static_cast<unsigned short>(placeholder + ActionOffset);
    LoadButtonRecordsFromStream(in);
    LoadButtonActionsFromStream(in);
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineButton2Tag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteBits(ReservedFlags, 7));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(TrackAsMenu));
        const unsigned int placeholder = body.GetPosition();
        VX_RETURN_IF_FAILED(body.WriteWord(ActionOffset));
        for (VXFlintButtonRecord* record : ButtonRecords) {
            if (record != nullptr) VX_RETURN_IF_FAILED(record->DumpToStream(body));
        }
        VX_RETURN_IF_FAILED(body.WriteByte(0));
        VX_RETURN_IF_FAILED(DumpButtonActionsToStream(body));
        // Kept: what a load left here is a distance already, and is made one again.
        if (ActionOffset != 0) Patch(body, placeholder, ActionOffset - placeholder);
        return kVXSuccess;
    });
}

void VXSwfDefineButton2Tag::LoadButtonRecordsFromStream(VXBitStream& in) {
    for (;;) {
        unsigned char first = 0;
        const bool isThere = in.ReadByte(first) == kVXSuccess;
        if (isThere && first == 0) return;
        in.MovePosition(-1);
        // Without a zero byte the last byte of the body is taken for one more record.
        VXFlintButtonRecord& record = ButtonRecords.Add(std::make_unique<VXFlintButtonRecord>());
        if (record.LoadFromStream(in) != kVXSuccess || !isThere) return;
    }
}

void VXSwfDefineButton2Tag::LoadButtonActionsFromStream(VXBitStream& in) {
    std::vector<bool> visited(NextActionPos == 0 ? 0 : 0x10000);
    const unsigned int size = in.GetSize();
    std::uint64_t mayLack = kMostPerByte * size;
    unsigned int consumed = 0;
    while (NextActionPos != 0 && consumed <= size) {
        const unsigned int start = NextActionPos;
        if (visited[start] || start >= size) break;
        visited[start] = true;
        in.SetPosition(start);
        unsigned short distance = 0;
        if (in.ReadWord(distance) != kVXSuccess) break;
        NextActionPos = distance == 0 ? 0 : static_cast<unsigned short>(start + distance);
        in.MovePosition(-2);
        VXFlintButtonCondAction& action = ButtonActions.Add(std::make_unique<VXFlintButtonCondAction>());
        if (action.LoadFromStream(in) != kVXSuccess) {  // kept as far as it was read
            const unsigned int lacking = BytesLacking(action.Actions);
            const auto allowed = static_cast<unsigned int>(std::min<std::uint64_t>(lacking, mayLack));
            mayLack -= allowed;
            VXMemoryLimit::Charge(kPricePerByte * (lacking - allowed));
        }
        consumed += in.GetPosition() - start;
    }
}

VXErrorCodeEnum VXSwfDefineButton2Tag::DumpButtonActionsToStream(VXBitStream& body) {
    unsigned int last = 0;
    for (const VXFlintButtonCondAction* action : ButtonActions) {
        if (action == nullptr) continue;
        last = body.GetPosition();
        if (ActionOffset == 0) ActionOffset = static_cast<unsigned short>(last);
        VX_RETURN_IF_FAILED(action->DumpToStream(body));
        Patch(body, last, body.GetPosition() - last);
    }
    if (last != 0) Patch(body, last, 0);
    return kVXSuccess;
}

void VXSwfDefineButton2Tag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    for (VXFlintButtonRecord* record : ButtonRecords) {
        if (record != nullptr && record->CharacterId != 0) map->Renumber(record->CharacterId);
    }
}

void VXSwfDefineButton2Tag::CreateButtonRecord(short up, short over, short down, short hit, unsigned short id,
                                               unsigned short depth) {
    VXFlintButtonRecord& record = ButtonRecords.Add(std::make_unique<VXFlintButtonRecord>());
    record.StateUp = up;
    record.StateOver = over;
    record.StateDown = down;
    record.StateHitTest = hit;
    record.CharacterId = id;
    record.PlaceDepth = depth;
}

void VXSwfDefineButton2Tag::AddButtonRecord(VXFlintButtonRecord* record) {
    if (record != nullptr) ButtonRecords.Add(std::unique_ptr<VXFlintButtonRecord>(record));
}

void VXSwfDefineButton2Tag::AddButtonAction(VXFlintButtonCondAction* action) {
    if (action != nullptr) ButtonActions.Add(std::unique_ptr<VXFlintButtonCondAction>(action));
}

void VXSwfDefineButton2Tag::BuildButtonDependencyList(std::list<unsigned short>& ids, VXSwfTagSet*) const {
    for (const VXFlintButtonRecord* record : ButtonRecords) {
        if (record != nullptr && record->CharacterId != 0) ids.push_back(record->CharacterId);
    }
}
