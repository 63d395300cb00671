#include "support/Test.h"

TEST(VXSwfParserComponent, IsOneAndStartsAndStopsInAnyOrder) {
    IVXComponent* component = GetSwfParserComponent();
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(GetSwfParserComponent(), component);
    EXPECT_EQ(component->GetComponentCode(), 19);
    EXPECT_EQ(component->Shutdown(), 0) << "without a start";
    EXPECT_EQ(
        component->HostSlot5() + component->HostSlot6() + component->HostSlot7() + component->HostSlot8(), 0);
    EXPECT_EQ(component->Startup(), 0);
    EXPECT_EQ(component->Startup(), 0) << "a second time";
    const auto& map = VXSwfParserComponent::GetColorMap();
    EXPECT_EQ(map.size(), 221u) << "all differ";
    const std::map<unsigned int, unsigned int> some = {{0x00000000, 0},  {0x00FF0000, 1},  {0x0000FF00, 2},
                                                       {0x000000FF, 3},  {0x00FFFFFF, 4},  {0xFF000000, 5},
                                                       {0xFF000033, 6},  {0xFF0000FF, 10}, {0xFF003300, 11},
                                                       {0xFF330000, 41}, {0xFFFFFFFF, 220}};
    for (const auto& [color, number] : some) EXPECT_EQ(map.at(color), number) << std::hex << color;
    EXPECT_EQ(component->Shutdown(), 0);
    EXPECT_EQ(component->Startup(), 0) << "once more";
    EXPECT_EQ(component->Shutdown(), 0);
}
