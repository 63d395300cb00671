// Loads records and tags, each by itself, and dumps whatever is there then, even after a failure.
//
// As often as the input has it:
//
//     u8     which: a record by its place in kRecords, else a tag
//     u8     flags: what the record is told before its load, or how the tag is made
//     u8     version of the player for records and tags that depend on it
//     u16    type of the tag, in the low ten bits; for a tag alone
//     u16    length of what follows
//     bytes  what to load

#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <typeinfo>

#include "Support.h"
#include "vxswf.h"

namespace {

constexpr int kMostFields = 256;

struct Setup {
    bool Has(unsigned int bit) const { return (flags >> bit & 1) != 0; }
    short Flag(unsigned int bit) const { return Has(bit) ? 1 : 0; }

    unsigned int flags;
    unsigned char version;
};

template <typename Record>
void Prepare(Record& record, const Setup& setup) {
    if constexpr (requires { record.SetAlpha(short{}); }) record.SetAlpha(setup.Flag(0));
    if constexpr (requires { record.UseAlpha; }) record.UseAlpha = setup.Flag(0);
    if constexpr (requires { record.HasAlpha; }) record.HasAlpha = setup.Flag(0);
    if constexpr (requires { record.SetSupports255Plus(short{}); }) record.SetSupports255Plus(setup.Flag(1));
    if constexpr (requires { record.SetIsLineStyle2(short{}); }) record.SetIsLineStyle2(setup.Flag(2));
    if constexpr (requires { record.SetLineStyle2(short{}); }) record.SetLineStyle2(setup.Flag(2));
    if constexpr (requires { record.NumFillBits; }) {
        record.NumFillBits = setup.version & 15u;
        record.NumLineBits = setup.version >> 4;
    }
    if constexpr (requires { record.StateNewStyles; }) {
        record.StateNewStyles = setup.Flag(3);
        record.StateLineStyle = setup.Flag(4);
        record.StateFillStyle1 = setup.Flag(5);
        record.StateFillStyle0 = setup.Flag(6);
        record.StateMoveTo = setup.Flag(7);
    }
    if constexpr (requires { record.m_GlyphBits; }) {
        record.m_GlyphBits = static_cast<unsigned char>(setup.flags);
        record.m_AdvanceBits = setup.version;
    }
}

template <typename Record>
VXErrorCodeEnum Load(Record& record, VXBitStream& in, const Setup& setup) {
    if constexpr (requires { record.LoadFromStream(in, setup.version); }) {
        return record.LoadFromStream(in, setup.version);
    } else {
        return record.LoadFromStream(in);
    }
}

template <typename Record>
void Run(VXBitStream& in, const Setup& setup) {
    Record record;
    Prepare(record, setup);
    VXIgnore(Load(record, in, setup));  // what was read before a failure is a record too
    if constexpr (requires(VXBitStream & out) { record.DumpToStream(out); }) {
        VXBitStream out;
        const VXErrorCodeEnum result = DumpTwice(record, out);
        Record copy(record);
        VXBitStream copied;
        Require(DumpTwice(copy, copied) == result);
        Require(AreEqual(out, copied));
    }
    if constexpr (requires(VXFlintIDMap * map) { record.UpdateReferenceIDs(map); }) {
        const auto map = std::make_unique<VXFlintIDMap>();
        map->Set(1, 2);
        record.UpdateReferenceIDs(map.get());
        record.UpdateReferenceIDs(nullptr);
    }
    VXIgnore(Load(record, in, setup));  // into one that is not fresh
}

void RunMatrix(VXBitStream& in, const Setup& setup) {
    VXFlintMatrix matrix;
    VXIgnore(matrix.LoadFromStream(in));
    VXPackedMatrix packed;
    if (packed.Set(matrix)) {
        VXFlintMatrix same = packed.Get();
        VXBitStream out, again;
        Require(matrix.DumpToStream(out) == kVXSuccess && same.DumpToStream(again) == kVXSuccess);
        Require(AreEqual(out, again));
    }
    if (setup.Has(0)) matrix.Rotate(setup.version);
    if (setup.Has(1)) matrix.Scale(matrix.TranslateX, setup.version);
    if (setup.Has(2)) matrix.Translate(matrix.ScaleX, matrix.ScaleY);
    VXBitStream out;
    VXIgnore(DumpTwice(matrix, out));
}

void RunFilter(VXBitStream& in, const Setup& setup) {
    VXFlintFilterShadow shadow;
    CVXStreamReadWrite stream(in.GetBuffer(), in.GetSize());
    stream.SetSwapping(setup.Flag(0));
    VXIgnore(shadow.ReadFromStream(&stream));
    VXBitStream out;
    VXIgnore(DumpTwice(shadow, out));
    CVXStreamReadWrite written;
    written.SetMode(IVXStream::kWrite);
    Require(shadow.WriteToStream(&written) == kVXSuccess);
    Require(written.GetMemorySize() <= static_cast<std::size_t>(shadow.GetStreamTransferSize()));
}

void RunParse(VXBitStream& in, const Setup& setup) {
    VXFlintActionRecord action(setup.version);
    action.Parse(&in);
    VXBitStream out;
    VXIgnore(DumpTwice(action, out));
    if (setup.Has(0)) action.Clean();
    if (setup.Has(1)) action.SetData(nullptr, setup.flags << 8);
    if (setup.Has(2)) action.SetData(action.m_ActionData, action.m_ActionData.GetSize());
    const std::unique_ptr<VXFlintActionRecord> copy(action.Copy());
    VXBitStream copied;
    VXIgnore(DumpTwice(*copy, copied));
}

/// Fields of every width, as the flags and the bytes themselves choose them.
void RunFields(VXBitStream& in, const Setup& setup) {
    VXBitStream out;
    VXString text;
    unsigned int bits = 0;
    int number = 0;
    short flag = 0;
    unsigned char bytes[64];
    unsigned int choice = setup.flags;
    for (int step = 0; step < kMostFields && in.IsEOF() == 0; ++step, choice = choice * 5 + 1) {
        const unsigned int width = (choice + setup.version) & 63u;
        switch (choice / 3 % 8) {
            case 0:
                VXIgnore(in.ReadBits(width, bits));
                VXIgnore(out.WriteBits(bits, width));
                break;
            case 1:
                VXIgnore(in.ReadSBits(width, number));
                VXIgnore(
                    out.WriteSBits(number, VXBitStream::MinBits(VXBitStream::MaxSNum4(number, 0, 0, 0), 1)));
                break;
            case 2:
                VXIgnore(in.ReadVXString(text));
                VXIgnore(out.WriteVXString(text));
                break;
            case 3:
                VXIgnore(in.ReadVXString(text, width));
                VXIgnore(out.WriteVXString(text));
                break;
            case 4:
                VXIgnore(in.ReadVXInt32(number));
                VXIgnore(out.WriteFixed(static_cast<float>(number)));
                break;
            case 5:
                in.MovePosition(static_cast<int>(width) - 3);
                VXIgnore(in.ReadVXBool16(flag));
                VXIgnore(out.WriteVXBool16(flag));
                break;
            case 6: {
                in.ByteAlignSBits();
                unsigned int length = width;
                if (in.Read(bytes, length) == kVXSuccess) VXIgnore(out.Write(bytes, length));
                break;
            }
            default:
                out.SetPosition(width);
                VXIgnore(out.FlushBits());
        }
    }
    Require(out.GetPosition() <= out.GetSize());
}

/// What was deflated comes back; what never was need not.
void RunCompression(VXBitStream& in, const Setup& setup) {
    constexpr unsigned int kHeader = 8;
    VXBitStream stream;
    VXIgnore(stream.WriteDWord(setup.flags));
    VXIgnore(stream.WriteDWord(setup.version));
    if (in.GetSize() != 0) VXIgnore(stream.Write(in.GetBuffer(), in.GetSize()));
    unsigned char* deflated = nullptr;
    unsigned int deflatedSize = 0;
    if (stream.Compress(kHeader, 1, &deflated, &deflatedSize) != 0) delete[] deflated;
    if (in.GetSize() != 0) {
        Require(stream.Compress(kHeader, 0, nullptr, nullptr) != 0);
        Require(stream.UnCompress(kHeader, kHeader + in.GetSize()) != 0);
        Require(stream.GetSize() == kHeader + in.GetSize());
        Require(std::memcmp(stream.GetBuffer() + kHeader, in.GetBuffer(), in.GetSize()) == 0);
    }
    stream.UnCompress(setup.version, setup.flags << 8);
}

using Runner = void (*)(VXBitStream&, const Setup&);

// What stands in front keeps its place, since the inputs choose by it.
constexpr Runner kRecords[] = {Run<VXFlintRectangle>,
                               Run<VXFlintRGB>,
                               RunMatrix,
                               Run<VXFlintCxForm>,
                               Run<VXFlintGradRecord>,
                               Run<VXFlintGradient>,
                               Run<VXFlintMorphGradRecord>,
                               Run<VXFlintMorphGradient>,
                               Run<VXFlintFillStyle>,
                               Run<VXFlintFillStyleArray>,
                               Run<VXFlintLineStyle>,
                               Run<VXFlintLineStyle2>,
                               Run<VXFlintMorphLineStyle>,
                               Run<VXFlintLineStyleArray>,
                               Run<VXFlintStraightEdgeRecord>,
                               Run<VXFlintCurvedEdgeRecord>,
                               Run<VXFlintShapeEndRecord>,
                               Run<VXFlintShapeStyleChangeRecord>,
                               Run<VXFlintShapeRecord>,
                               Run<VXFlintShapeRecords>,
                               Run<VXFlintShape>,
                               Run<VXFlintShapeWithStyle>,
                               Run<VXFlintClipEventFlags>,
                               Run<VXFlintClipActionRecord>,
                               Run<VXFlintClipActions>,
                               RunFilter,
                               Run<VXFlintButtonRecord>,
                               Run<VXFlintButtonCondAction>,
                               Run<VXFlintSoundEnvelope>,
                               Run<VXFlintSoundInfo>,
                               Run<VXSwfTextStyleChangeRecord>,
                               Run<VXFlintActionRecord>,
                               Run<VXFlintActionRecords>,
                               RunParse,
                               RunFields,
                               RunCompression};

/// Of a class that a host may copy without a dump.
template <typename Tag>
void CheckCopy(VXSwfTag& tag) {
    if (typeid(tag) != typeid(Tag)) return;
    auto& original = static_cast<Tag&>(tag);
    Tag copy(original);
    for (int way = 0; way < 2; ++way) {
        VXBitStream out, copied;
        Require(DumpTwice(original, out) == DumpTwice(copy, copied));
        Require(AreEqual(out, copied));
        copy = original;
    }
}

void RunTag(VXBitStream& body, unsigned int type, const Setup& setup) {
    const TagPtr tag = MakeTag(type, setup.Flag(0), setup.flags >> 1 & 1u);
    tag->SetIsLongTag(setup.Flag(2));
    ExerciseTag(*tag, body, setup.version);
    CheckCopy<VXSwfPlaceObject2Tag>(*tag);
    CheckCopy<VXSwfPlaceObject3Tag>(*tag);
    CheckCopy<VXSwfDefineButton2Tag>(*tag);
    CheckCopy<VXSwfDefineEditTextTag>(*tag);
    CheckCopy<VXSwfDefineFont2Tag>(*tag);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    while (!input.IsEmpty()) {
        const unsigned int which = input.Byte();
        const unsigned int flags = input.Byte();
        const Setup setup{flags, input.Byte()};
        const unsigned int type = which < std::size(kRecords) ? 0 : input.Word() & 0x3FFu;
        VXBitStream bytes = input.Stream(input.Word());
        if (which < std::size(kRecords)) {
            kRecords[which](bytes, setup);
        } else {
            RunTag(bytes, type, setup);
        }
    }
    return 0;
}
