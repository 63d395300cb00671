// Hosts and the library reach some interfaces by the place of an operation in the virtual table. A table that
// is read by hand, as the C++ ABI of this platform lays it out, shows that nothing has moved.
#include "support/Test.h"

namespace {

/// The destructor takes two slots, so an operation behind it stands one further than its number says.
template <class Result, class Interface>
Result CallSlot(Interface* object, int slot) {
    using Operation = Result (*)(Interface*);
    return (*reinterpret_cast<Operation* const*>(object))[slot](object);
}

class Placed : public VXSizeNPositionData {
public:
    VXReal GetYExtent() const override { return 4; }
    VXReal GetXExtent() const override { return 3; }
    VXReal GetYPosition() const override { return 2; }
    VXReal GetXPosition() const override { return 1; }
};

class Component : public IVXComponent {
public:
    int GetComponentCode() override { return 2; }
    int Startup() override { return 3; }
    int Shutdown() override { return 4; }
    int HostSlot5() override { return 5; }
    int HostSlot6() override { return 6; }
    int HostSlot7() override { return 7; }
    int HostSlot8() override { return 8; }
};

}  // namespace

TEST(SlotOrder, ExtentsAreThirdAndFourth) {
    Placed placed;
    VXSizeNPositionData* const data = &placed;
    for (int slot = 0; slot < 4; ++slot) EXPECT_EQ(CallSlot<VXReal>(data, slot), slot + 1);
}

TEST(SlotOrder, AComponentHasElevenOperations) {
    Component component;
    IVXComponent* const base = &component;
    for (int number = 2; number <= 8; ++number) EXPECT_EQ(CallSlot<int>(base, number), number);
    for (int number = 9; number <= 11; ++number) EXPECT_EQ(CallSlot<int>(base, number), 0);
}

TEST(SlotOrder, AStreamKeepsItsPlaces) {
    CVXStreamReadWrite stream("abc", 3);
    IVXStream* const base = &stream;
    unsigned char byte = 0;
    using XferOne = int (*)(IVXStream*, unsigned char*);
    EXPECT_EQ((*reinterpret_cast<XferOne* const*>(base))[3](base, &byte), 1);
    EXPECT_EQ(byte, 'a');
    EXPECT_EQ(CallSlot<unsigned int>(base, 20), 1U) << "Tell";
    EXPECT_EQ(CallSlot<int>(base, 23), kVXStreamGood) << "GetStreamState";
    EXPECT_TRUE(CallSlot<bool>(base, 24)) << "IsReading";
    EXPECT_FALSE(CallSlot<bool>(base, 25)) << "IsWriting";
    EXPECT_EQ(CallSlot<int>(base, 28), 1) << "Open";
    EXPECT_EQ(CallSlot<int>(base, 31), IVXStream::kRead) << "GetMode";
}
