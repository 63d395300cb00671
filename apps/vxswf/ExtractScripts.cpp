#include "ActionListing.h"
#include "Extraction.h"

namespace {

std::string ListHandlers(const std::vector<Handler>& handlers) {
    std::string text;
    for (const Handler& handler : handlers) {
        if (text.size() > kLongestListing) return text + "(cut: too long)\n";
        text += "on (" + handler.events + ")\n" + ListActions(handler.actions);
    }
    return text;
}

}  // namespace

void ExtractScripts(const FramedTag& tag, const std::string& place, Extraction& extraction) {
    ByteReader in(tag.body);
    switch (tag.type) {
        case 12:
            return extraction.SaveText("scripts", place, {{"place", place}}, ListActions(tag.body));
        case 59: {
            const unsigned short id = in.U16();
            return extraction.SaveText("scripts", "init-" + extraction.StemOf(id), {{"id", id}},
                                       ListActions(in.GetRest()));
        }
        case 7:
        case 34: {
            const unsigned short id = in.U16();
            const std::vector<Handler> handlers = ReadButtonHandlers(tag);
            if (handlers.empty()) return;
            return extraction.SaveText("scripts", "button-" + extraction.StemOf(id), {{"id", id}},
                                       ListHandlers(handlers));
        }
        case 26:
        case 70:
        case 94: {
            const Placement placement = ReadPlacement(tag);
            if (placement.clipActions.empty()) return;
            return extraction.SaveText(
                "scripts", place + "-depth-" + std::to_string(placement.depth),
                {{"place", place}, {"depth", placement.depth}, {"name", placement.name}},
                ListHandlers(ReadClipHandlers(placement.clipActions, extraction.version)));
        }
        case 72:
            return extraction.Save("scripts", place, ".abc", {{"place", place}}, {in.GetRest()});
        case 82: {
            const std::uint32_t flags = in.U32();
            const std::string name = in.Text();
            return extraction.Save("scripts", place, ".abc",
                                   {{"place", place}, {"name", name}, {"flags", flags}}, {in.GetRest()});
        }
        default:
            return;
    }
}
