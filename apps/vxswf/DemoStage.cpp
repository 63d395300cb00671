#include "DemoStage.h"

namespace {

constexpr unsigned char kVersion = 9;
constexpr unsigned short kFramesPerSecond = 12;

}  // namespace

DemoStage::DemoStage() {
    m_Movie.SetFlintVersion(kVersion);
    m_Movie.SetCompression(1);
    m_Movie.SetWidth(640);
    m_Movie.SetHeight(480);
    m_Movie.SetFrameRate(kFramesPerSecond);
    Add<VXSwfFileAttributesTag>(VXSwfTagFactory::TAG_FILEATTRIBUTES);
    Add<VXSwfSetBackgroundColorTag>(VXSwfTagFactory::TAG_SETBACKGROUNDCOLOR)
        .SetRGBColor(VXFlintRGB(0xF4, 0xF1, 0xE8, 0, 0));
}

void DemoStage::Place(VXSwfDefinitionTag& character, double x, double y,
                      const std::vector<VXFlintFilter*>& filters) {
    m_Movie.PlaceObject(&character, -1, VXString(), x, y, 0, filters);
}

void DemoStage::AddScript(std::initializer_list<unsigned char> codes) {
    auto& script = Add<VXSwfDoActionTag>(VXSwfTagFactory::TAG_DOACTION);
    for (const unsigned char code : codes) {
        VXIgnore(script.PushActionRecord(new VXFlintActionRecord(code)));  // takes everything
    }
}

void DemoStage::EndFrame() {
    m_Movie.IncludeShowFrameTags(1, -1);
    m_Movie.SetFrameCount(static_cast<unsigned short>(m_Movie.GetNumShowFrameTags()));
}
