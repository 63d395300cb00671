#include "ExtractPage.h"

#include <string>

#include "Report.h"

namespace {

using Json = nlohmann::ordered_json;

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : Printable(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string TextOf(const Json& value) {
    return value.is_string() ? value.get<std::string>()
                             : value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// How a browser shows a file. Its name needs no escapes.
std::string Show(const std::string& kind, const std::string& file) {
    const std::string link = "<a href=\"" + file + "\">" + file + "</a>";
    if (kind == "pictures" && !file.ends_with(".bin"))
        return "<img src=\"" + file + "\" alt=\"\"><br>" + link;
    if (kind == "sounds" && (file.ends_with(".mp3") || file.ends_with(".wav")))
        return "<audio controls preload=\"none\" src=\"" + file + "\"></audio><br>" + link;
    return link;
}

}  // namespace

void WritePage(const Json& index, std::FILE* file) {
    const auto write = [file](const std::string& text) { std::fwrite(text.data(), 1, text.size(), file); };
    const std::string title = Escaped(TextOf(index["movie"]));
    write("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
          "</title>\n<style>\nbody { font-family: sans-serif; margin: 2em }\n"
          "td { border-top: 1px solid #ccc; padding: .4em 1em .4em 0; vertical-align: top }\n"
          "img { max-width: 30em; max-height: 20em; background: repeating-conic-gradient(#ddd 0 25%, #fff 0 "
          "50%) 0 0 / 16px 16px }\n</style>\n</head>\n<body>\n<h1>" +
          title + "</h1>\n");
    for (const Json& note : index["notes"]) write("<p>" + Escaped(TextOf(note)) + "</p>\n");
    std::string last;
    for (const Json& item : index["items"]) {
        const std::string kind = TextOf(item["kind"]);
        if (kind != last) write((last.empty() ? "<h2>" : "</table>\n<h2>") + kind + "</h2>\n<table>\n");
        last = kind;
        std::string fields;
        for (const auto& [key, value] : item.items()) {
            if (key == "kind" || key == "file") continue;
            fields += (fields.empty() ? "" : ", ") + key + ' ' + Escaped(TextOf(value));
        }
        write("<tr><td>" + (item.contains("file") ? Show(kind, TextOf(item["file"])) : "") + "</td><td>" +
              fields + "</td></tr>\n");
    }
    write(std::string(last.empty() ? "" : "</table>\n") + "</body>\n</html>\n");
}
