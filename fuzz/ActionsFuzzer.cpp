// Loads a script, changes it as a merge does, and writes it.
//
//     u8     flags: 1 copies in front of the end, 2 gives the list an action of code 0 as its end
//     texts  what to replace, and by what: u8 length and so many bytes
//     bytes  the script

#include <cstdint>

#include "Support.h"
#include "vxswf.h"

namespace {

/// A list without an action of code 0 comes back as it was written.
void CheckRoundTrip(const VXFlintActionRecords& list) {
    VXBitStream first;
    Require(list.DumpToStream(first) == kVXSuccess);
    first.SetPosition(0);
    VXFlintActionRecords again;
    Require(again.LoadFromStream(first) == kVXSuccess);
    Require(first.IsEOF() == 1);
    VXBitStream packed;
    Require(again.DumpToStream(packed) == kVXSuccess);
    Require(AreEqual(first, packed));
    Require(again.size() == list.size());  // takes the list apart
    VXBitStream second;
    Require(again.DumpToStream(second) == kVXSuccess);
    Require(AreEqual(first, second));
}

void CheckReplacement(VXFlintActionRecord& record, const VXString& from, const VXString& to) {
    const int before = record.m_Length;
    int delta = 1;
    const short isReplaced = ReplaceString(record, from, to, delta);
    Require(record.m_Length - before == delta);
    Require(isReplaced != 0 || delta == 0);
    Require(!record.m_ActionData || record.m_ActionData.GetSize() <= 0xFFFF);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int flags = input.Byte();
    const short isBeforeEnd = flags & 1;
    const VXString from = input.Text();
    const VXString to = input.Text();
    VXBitStream in = input.Rest();

    VXFlintActionRecords list;
    const unsigned int start = in.GetPosition();
    if (list.LoadFromStream(in) == kVXSuccess) {
        VXBitStream read;
        read.LoadFromAllocedMem(in.GetBuffer() + start, in.GetPosition() - start);
        VXBitStream written;
        Require(list.DumpToStream(written) == kVXSuccess);
        Require(AreEqual(read, written));
    }
    CheckRoundTrip(list);

    VXFlintActionRecords own;
    own.Copy(list, isBeforeEnd);
    const VXFlintActionRecords shared = list;  // sees what happens to the actions of the other
    for (VXFlintActionRecord* record : list) CheckReplacement(*record, from, to);
    Require(own.size() == list.size() && shared.size() == list.size());
    CheckRoundTrip(shared);
    CheckRoundTrip(own);

    if ((flags & 2) != 0) own.PushActionRecord(new VXFlintActionRecord(0));
    const std::size_t count = own.size();
    own.Copy(own, isBeforeEnd);
    const std::size_t ends = (flags & 2) != 0 && isBeforeEnd != 0 ? 1 : 0;
    Require(own.size() == 2 * count - ends);
    own.InsertCallFunction(to, static_cast<int>(count));
    VXBitStream out;
    Require(own.DumpToStream(out) == kVXSuccess);
    return 0;
}
