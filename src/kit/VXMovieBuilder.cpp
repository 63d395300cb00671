#include "kit/VXMovieBuilder.h"

#include <algorithm>
#include <cstring>
#include <typeinfo>
#include <utility>

#include "kit/VXMovieBuilder_p.h"
#include "kit/VXMovieIO.h"
#include "timeline/VXSwfPlaceObjectTag.h"
#include "whole/VXCharacterIds.h"

namespace {

/// Width and height as the header of a frame states them (ITU-T T.81); zeros when there is none.
std::pair<unsigned int, unsigned int> SizeOfJpeg(const unsigned char* bytes, std::size_t size) {
    const auto word = [&](std::size_t at) { return bytes[at] << 8 | bytes[at + 1]; };
    std::size_t at = 2;
    if (size < at || word(0) != 0xFFD8) return {};
    while (size - at >= 9) {
        if (bytes[at] != 0xFF) return {};
        const unsigned int mark = bytes[at + 1];
        const bool isAlone = mark == 0xFF || mark == 0x01 || (mark >= 0xD0 && mark <= 0xD8);
        const bool isFrame = mark >= 0xC0 && mark <= 0xCF && mark != 0xC4 && mark != 0xC8 && mark != 0xCC;
        if (isFrame) return {word(at + 7), word(at + 5)};
        const std::size_t step =
            isAlone ? (mark == 0xFF ? 1 : 2) : 2 + static_cast<std::size_t>(word(at + 2));
        if (step > size - at) return {};
        at += step;
    }
    return {};
}

unsigned int TopDepthOf(VXSwfTag& tag, std::vector<bool>& taken) {
    unsigned int depth = 0;
    unsigned int top = 0;
    if (const auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(&tag)) {
        depth = placement->GetDepth();
        top = placement->HasClipDepth != 0 ? placement->ClipDepth : 0;
    } else if (const auto* oldPlacement = dynamic_cast<VXSwfPlaceObjectTag*>(&tag)) {
        depth = oldPlacement->GetDepth();
    } else if (typeid(tag) == typeid(VXSwfTag)) {
        const unsigned int offset = VXCharacterIds::GetDepthOffset(tag.GetTagType());
        VXBitStream body = tag.GetDataStream();
        unsigned short word = 0;
        if (offset != VXCharacterIds::kNoDepth && offset < body.GetSize()) {
            body.SetPosition(offset);
            VXIgnore(body.ReadWord(word));  // a depth that is cut is as good as any
        }
        depth = word;
    }
    taken[depth] = true;
    return std::max(depth, top);
}

}  // namespace

unsigned short VXMovieBuilder::Ids::GetId(tVXSwfReservedIDEnum) {
    while (m_Next < kNoId && m_Taken[m_Next]) ++m_Next;
    return static_cast<unsigned short>(m_Next < kNoId ? m_Next++ : kNoId);
}

VXErrorCodeEnum VXMovieBuilder::Ids::GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) {
    id = GetId(reserved);
    return id == kNoId ? kVXFailure : kVXSuccess;
}

VXMovieBuilder::VXMovieBuilder(VXFlintFile& movie, unsigned int width, unsigned int height,
                               unsigned short frameRate, unsigned char version)
    : VXMovieBuilder(movie) {
    constexpr unsigned char kFirstVersionWithAttributes = 8;
    movie.SetFlintVersion(version);
    movie.SetCompression(1);
    movie.SetWidth(width);
    movie.SetHeight(height);
    movie.SetFrameRate(frameRate);
    if (version >= kFirstVersionWithAttributes) Add<TAG_FILEATTRIBUTES>();
}

VXMovieBuilder::VXMovieBuilder(VXFlintFile& movie) : m_Movie(movie), m_TakenDepths(65536) {
    m_Levels.emplace_back();
    TakeOver();
}

VXMovieBuilder::~VXMovieBuilder() = default;

void VXMovieBuilder::TakeOver() {
    unsigned int top = 0;
    bool& isOpen = m_Levels.back().isFrameOpen;
    for (VXSwfTag* tag : m_Movie) {
        if (tag == nullptr) continue;
        m_Ids.Take(tag->GetCharacterId());
        m_Ids.Take(tag->GetReferencedID());
        const unsigned int depth = TopDepthOf(*tag, m_TakenDepths);
        top = std::max(top, depth);
        isOpen = tag->GetTagType() != TAG_SHOWFRAME && (isOpen || depth != 0);
        if (typeid(*tag) != typeid(VXSwfTag)) continue;
        VXBitStream body = tag->GetDataStream();
        const unsigned char* bytes = body.GetBuffer();
        VXIgnore(VXCharacterIds::Visit(
            tag->GetTagType(), bytes, body.GetSize(), [&](unsigned int offset, VXCharacterIds::Role) {
                m_Ids.Take(static_cast<unsigned short>(bytes[offset] | bytes[offset + 1] << 8));
            }));  // as far as the tag can be read
    }
    if (top != 0) m_Movie.GetAbsTagDepth(static_cast<unsigned short>(std::min(top, 0x7FFFu)));
}

void VXMovieBuilder::Fail(std::string text) {
    if (!m_HasFailed) m_ErrorText = std::move(text);
    m_HasFailed = true;
}

VXSwfTagSet& VXMovieBuilder::GetTimeline() {
    VXSwfDefineSpriteTag* sprite = m_Levels.back().sprite.get();
    return sprite != nullptr ? static_cast<VXSwfTagSet&>(*sprite) : m_Movie;
}

VXSwfTagSet& VXMovieBuilder::OpenFrame() {
    m_Levels.back().isFrameOpen = true;
    return GetTimeline();
}

void VXMovieBuilder::AddCharacter(VXSwfTag* tag) {
    const unsigned short id = m_Ids.GetId(kVXSwfOrdinaryId);
    if (id == IVXSwfIdGenerator::kNoId) Fail("the movie has more characters than there are IDs");
    tag->SetCharacterId(id);
    m_Movie.IncludeTag(tag, -1);
}

VXSwfDefineShapeTag* VXMovieBuilder::DefineShapeOf(const VXSwfDefinitionTag& bitmap, unsigned int width,
                                                   unsigned int height) {
    const int right = static_cast<int>(width);
    const int bottom = static_cast<int>(height);
    auto& shape = Define<TAG_DEFINESHAPE3>();
    shape.CreateShapeForImage(bitmap.GetCharacterId(), 0, 0, right, bottom, right, bottom, 0);
    return &shape;
}

VXSwfDefineShapeTag* VXMovieBuilder::DefinePicture(const VXImage& image) {
    const unsigned int width = image.GetWidth();
    const unsigned int height = image.GetHeight();
    if (image.GetBuffer() == nullptr || width == 0 || height == 0 || width > 65535 || height > 65535) {
        Fail("a picture has no pixels, or more than 65535 in a row or column");
        return nullptr;
    }
    auto& bitmap = Define<TAG_DEFINEBITSLOSSLESS2>();
    if (bitmap.CreateImage(image, kVXBitmapQualityTrueColor) != kVXSuccess) {
        Fail("there is no memory for a picture");
        return nullptr;
    }
    return DefineShapeOf(bitmap, width, height);
}

VXSwfDefineShapeTag* VXMovieBuilder::DefineJpeg(IVXStream& jpeg, const std::vector<unsigned char>& alpha) {
    VXBitStream bytes;
    bytes.LoadFromStream(&jpeg);
    const unsigned int size = bytes.GetSize();
    const auto [width, height] = SizeOfJpeg(bytes.GetBuffer(), size);
    if (width == 0 || height == 0) {
        Fail("what is given as a JPEG is none, or does not state its size");
        return nullptr;
    }
    if (!alpha.empty() && alpha.size() != std::size_t{width} * height) {
        Fail("the alpha plane of a JPEG does not have its size");
        return nullptr;
    }
    auto& bitmap = alpha.empty() ? Define<TAG_DEFINEBITSJPEG2>() : Define<TAG_DEFINEBITSJPEG3>();
    auto copy = std::make_unique<unsigned char[]>(size);
    std::memcpy(copy.get(), bytes.GetBuffer(), size);
    VXIgnore(bitmap.SetJpegData(copy.release(), size));  // there are bytes, as below
    if (!alpha.empty()) VXIgnore(bitmap.SetAlphaData(alpha.data(), static_cast<unsigned int>(alpha.size())));
    return DefineShapeOf(bitmap, width, height);
}

VXSwfDefineSoundTag* VXMovieBuilder::DefineSound(IVXStream& mp3) {
    auto sound = std::unique_ptr<VXSwfDefineSoundTag>(VXCreateTag<TAG_DEFINESOUND>());
    if (sound->IncludeMP3Sound(&mp3, 0) == 0) {
        Fail("what is given as an MP3 has no frame of one");
        return nullptr;
    }
    VXSwfDefineSoundTag* made = sound.release();
    AddCharacter(made);
    return made;
}

VXSwfDefineButton2Tag* VXMovieBuilder::DefineButton(const VXSwfTag* up, const VXSwfTag* over,
                                                    const VXSwfTag* down) {
    if (up == nullptr || over == nullptr || down == nullptr) {
        Fail("a button has a state without a character");
        return nullptr;
    }
    auto& button = Define<TAG_DEFINEBUTTON2>();
    button.CreateButtonRecord(1, 0, 0, 1, up->GetCharacterId(), 1);
    button.CreateButtonRecord(0, 1, 0, 0, over->GetCharacterId(), 1);
    button.CreateButtonRecord(0, 0, 1, 0, down->GetCharacterId(), 1);
    return &button;
}

VXSwfDefineButton2Tag* VXMovieBuilder::DefineTextButton(const VXString& text, const VXTextStyle& style,
                                                        int width, int height, const VXFlintRGB& up,
                                                        const VXFlintRGB& over, const VXFlintRGB& down) {
    constexpr int kRadius = 8;
    const VXSwfDefineTextTag* label = DefineText(text, style);
    if (label == nullptr) return nullptr;
    const VXSwfTag* faces[3] = {};
    const VXSwfTag** face = faces;
    for (VXFlintRGB color : {up, over, down}) {
        color.UseAlpha = 1;
        auto& tile = Define<TAG_DEFINESHAPE3>();
        tile.CreateRoundedRectangle(0, 0, width, height, color, kRadius);
        *face++ = &tile;
    }
    const double x = (width - MeasureText(text, style)) / 2;
    VXSwfDefineButton2Tag* button = DefineButton(faces[0], faces[1], faces[2]);
    auto* record = new VXFlintButtonRecord;
    record->StateUp = record->StateOver = record->StateDown = 1;
    record->CharacterId = label->GetCharacterId();
    record->PlaceDepth = 2;
    record->Matrix.Translate(x, (height - label->m_Bounds.YMax) / 2);
    button->AddButtonRecord(record);
    return button;
}

bool VXMovieBuilder::AddActions(const VXActionWriter& script, VXFlintActionRecords& actions) {
    if (script.AddTo(actions) == kVXSuccess) return true;
    Fail("a script cannot be written: " + script.GetErrorText());
    return false;
}

void VXMovieBuilder::AddAction(VXSwfDefineButton2Tag* button, const VXActionWriter& script,
                               unsigned int key) {
    if (button == nullptr) return;
    for (const bool isKey : {false, true}) {
        if (isKey && key == 0) continue;
        auto* action = new VXFlintButtonCondAction;
        button->AddButtonAction(action);
        if (isKey) {
            action->CondKeyPress = key;
        } else {
            action->CondOverDownToOverUp = 1;
        }
        if (!AddActions(script, action->Actions)) return;
    }
}

VXSwfDefineSpriteTag& VXMovieBuilder::BeginSprite() {
    m_Levels.emplace_back();
    m_Levels.back().sprite.reset(VXCreateTag<TAG_DEFINESPRITE>());
    return *m_Levels.back().sprite;
}

VXSwfDefineSpriteTag* VXMovieBuilder::EndSprite() {
    if (m_Levels.size() == 1) {
        Fail("a sprite is ended that was not begun");
        return nullptr;
    }
    if (m_Levels.back().isFrameOpen || GetTimeline().GetNumShowFrameTags() == 0) ShowFrame();
    VXSwfDefineSpriteTag* sprite = m_Levels.back().sprite.release();
    m_Levels.pop_back();
    AddCharacter(sprite);
    return sprite;
}

VXSwfPlaceObject2Tag* VXMovieBuilder::Place(const VXSwfTag* character, double x, double y,
                                            const VXString& name, unsigned short depth,
                                            const std::vector<VXFlintFilter*>& filters) {
    if (character == nullptr) {
        Fail("a character is placed that was not made");
        return nullptr;
    }
    VXSwfTagSet& timeline = OpenFrame();
    // Those of the movie that was taken over, which its own count does not know.
    while (depth == 0) {
        depth = timeline.GetAbsTagDepth(0);
        if (m_Levels.size() == 1 && m_TakenDepths[depth]) depth = 0;
    }
    return timeline.PlaceObject(character->GetCharacterId(), -1, name, x, y, depth, filters);
}

void VXMovieBuilder::AddEvent(VXSwfPlaceObject2Tag* placement, short VXFlintClipEventFlags::*event,
                              const VXActionWriter& script, unsigned char key) {
    if (placement == nullptr) return;
    VXFlintClipActions& events = placement->EditClipActions();
    auto* handler = new VXFlintClipActionRecord;
    events.ClipActionRecords.push_back(handler);
    handler->EventFlags.*event = 1;
    handler->KeyCode = key;
    events.AllEventFlags.*event = 1;
    if (script.AddTo(*handler) != kVXSuccess) Fail("a script cannot be written: " + script.GetErrorText());
}

void VXMovieBuilder::AddScript(const VXActionWriter& script) {
    OpenFrame();
    AddActions(script, Add<TAG_DOACTION>().m_ActionRecords);
}

void VXMovieBuilder::AddLabel(const VXString& name) {
    // No class builds a label, so one is written and loaded.
    const std::string text = name.GetUTF8String();
    const auto size = static_cast<unsigned int>(text.size() + 1);
    VXBitStream wire;
    VXIgnore(wire.WriteWord(static_cast<unsigned short>(TAG_FRAMELABEL << 6 | 0x3F)));  // memory takes all
    VXIgnore(wire.WriteDWord(size));
    VXIgnore(wire.Write(text.c_str(), size));
    wire.SetPosition(0);
    OpenFrame();
    VXSwfTag& label = Add<TAG_FRAMELABEL>();
    VXIgnore(label.LoadFromStream(wire));
    label.SetIsLongTag(0);
}

void VXMovieBuilder::StartSound(const VXSwfDefineSoundTag* sound, unsigned short loops) {
    if (sound == nullptr) return;
    OpenFrame();
    auto& start = Add<TAG_STARTSOUND>();
    start.StartSound(sound->GetCharacterId());
    if (loops < 2) return;
    start.SoundInfo.HasLoops = 1;
    start.SoundInfo.LoopCount = loops;
}

void VXMovieBuilder::SetBackground(const VXFlintRGB& color) {
    VXFlintRGB opaque = color;
    opaque.UseAlpha = 0;
    Add<TAG_SETBACKGROUNDCOLOR>().SetRGBColor(opaque);
}

void VXMovieBuilder::ShowFrame(unsigned int count) {
    GetTimeline().IncludeShowFrameTags(count, -1);
    m_Levels.back().isFrameOpen = false;
}

VXErrorCodeEnum VXMovieBuilder::Finish() {
    if (m_Levels.size() > 1) Fail("a sprite was begun and not ended");
    const auto count = [this] {
        return std::count_if(m_Movie.begin(), m_Movie.end(), [](const VXSwfTag* tag) {
            return tag != nullptr && tag->GetTagType() == TAG_SHOWFRAME;
        });
    };
    if (m_Levels.front().isFrameOpen || count() == 0) {
        m_Movie.IncludeShowFrameTags(1, -1);
        m_Levels.front().isFrameOpen = false;
    }
    const auto numFrames = count();
    if (numFrames > 65535) Fail("the movie has more than 65535 frames");
    m_Movie.SetFrameCount(static_cast<unsigned short>(numFrames));
    SettleTexts();
    return m_HasFailed ? kVXFailure : kVXSuccess;
}

VXErrorCodeEnum VXMovieBuilder::Save(const std::string& path) {
    VX_RETURN_IF_FAILED(Finish());
    VXMovieIO files;
    const VXErrorCodeEnum code = files.Save(m_Movie, path);
    m_ErrorText = files.GetErrorText();  // of this save alone: the next may go elsewhere
    return code;
}
