#pragma once

#include <list>
#include <vector>

#include "framework/VXSwfDefinitionTag.h"
#include "memory/VXOwnedVector.h"
#include "timeline/VXFlintButtonCondAction.h"
#include "timeline/VXFlintButtonRecord.h"

/// A button.
///
///     type 34:  CharacterId u16, ReservedFlags ub[7], TrackAsMenu ub[1]
///               ActionOffset u16                    distance from here to the conditions, 0 for none
///               button records, then a zero byte
///               button conditions, each with the distance to the next
///
/// The tag owns its records and conditions; a copied tag has its own, with actions of its own.
class VXSWF_API VXSwfDefineButton2Tag : public VXSwfDefinitionTag {
public:
    VXSwfDefineButton2Tag(const VXSwfDefineButton2Tag& other);
    VXSwfDefineButton2Tag& operator=(const VXSwfDefineButton2Tag& other);

    using VXSwfDefinitionTag::DumpToStream;
    /// Sizes of conditions are computed, and the last one is 0.
    ///
    /// Kept: for a loaded button the offset to the conditions goes out 3 lower than it came. A button built
    /// by code has the true one.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Replaces the characters of the records. An ID of 0 is not looked up, and an answer of 0 leaves the old
    /// ID.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineButton2Tag() override;
    /// 1 without flags or offset; records and conditions that fail are kept as far as they were read and not
    /// reported. The chain of conditions ends where it comes back to a place, where it leaves the body, and
    /// once the conditions together have taken more bytes than the body has. What actions that are cut
    /// short lack beyond 256 times the bytes of the body counts sixteenfold as memory of the load.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Appends a record for the states that are non-zero.
    void CreateButtonRecord(short up, short over, short down, short hit, unsigned short id,
                            unsigned short depth);
    /// Take over what they are given; null is ignored.
    void AddButtonRecord(VXFlintButtonRecord* record);
    void AddButtonAction(VXFlintButtonCondAction* action);
    /// Appends the character of every record that has one, as often as it occurs. The set is not used.
    void BuildButtonDependencyList(std::list<unsigned short>& ids, VXSwfTagSet* set) const;

    unsigned int ReservedFlags = 0;
    short TrackAsMenu = 0;
    unsigned short ActionOffset = 0;   ///< as loaded, or the place of the conditions in the body after a dump
    unsigned short NextActionPos = 0;  ///< of the load in progress
    VXOwnedVector<VXFlintButtonRecord> ButtonRecords;      ///< null entries are passed over
    VXOwnedVector<VXFlintButtonCondAction> ButtonActions;  ///< null entries are passed over
    std::vector<unsigned short> ButtonDependents;          ///< not used

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineButton2Tag(enuTagType type);

    void LoadButtonRecordsFromStream(VXBitStream& in);
    void LoadButtonActionsFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpButtonActionsToStream(VXBitStream& body);
    void CopyLists(const VXSwfDefineButton2Tag& other);
};
