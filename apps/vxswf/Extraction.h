#pragma once

#include <cstdio>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "MovieBytes.h"
#include "MovieRecords.h"
#include "Report.h"

using Json = nlohmann::ordered_json;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

/// What is taken out of one movie: files in folders of one directory, and an index of them.
///
/// Names of files are made of the kind, the ID or place, and letters and digits of an exported name. A file
/// that is there is removed first, so that a link never leads elsewhere. Hostile movies claim much: there are
/// limits to the number of things, the pixels of all pictures and the bytes of all files.
class Extraction {
public:
    /// `size` is that of the movie as it came, compressed or not.
    Extraction(std::string movie, std::string directory, std::size_t size);

    /// Makes the directory. `only` holds the kinds that are wanted; none for all.
    bool Begin(const std::set<std::string>& only);
    bool Wants(const char* kind) const { return m_Only.empty() || m_Only.contains(kind); }
    /// False once nothing more is to be taken out, since a limit was reached or a file not written.
    bool GoesOn() const { return m_Code == kDone; }
    /// What was noted makes a failure of it.
    ExitCode GetCode() const { return m_Code == kDone && !m_Notes.empty() ? kFailed : m_Code; }

    /// "DIR/pictures/12-logo.png" for kind, stem and ending, and an item of the index for it. Null when
    /// nothing more is to be written; the item is then not there.
    OpenFile Create(const char* kind, const std::string& stem, const std::string& ending, Json item);
    /// The same with the contents, which are then in the file.
    void Save(const char* kind, const std::string& stem, const std::string& ending, Json item,
              std::initializer_list<ByteSpan> contents);
    void SaveText(const char* kind, const std::string& stem, Json item, const std::string& text);
    /// An item without a file.
    void Add(const char* kind, Json item);
    /// Closes a file that others have written to. Reports when not all went in.
    void Finish(OpenFile file);
    /// Reports what could not be taken out, and keeps it for the index.
    void Note(const std::string& text);
    /// How many bytes may still be saved.
    std::uint64_t GetBytesLeft() const { return m_BytesLeft; }
    /// Whether a picture of this size is still to be decoded.
    bool AdmitPicture(unsigned int width, unsigned int height);

    /// "12-logo" for a character, by its ID and the name that it is exported under.
    std::string StemOf(unsigned short id) const;

    /// Writes index.json and index.html.
    void WriteIndex(Json header);

    std::map<unsigned short, std::string> exports;
    Fonts fonts;
    unsigned int version = 0;
    ByteSpan jpegTables;

private:
    bool Admit();
    OpenFile Open(const std::string& path);

    std::string m_Movie;
    std::string m_Directory;
    std::set<std::string> m_Only;
    std::map<std::string, unsigned int> m_Paths;  // below the directory, without endings: how often they came
    std::vector<Json> m_Items;
    std::vector<std::string> m_Notes;
    std::uint64_t m_PixelsLeft;
    std::uint64_t m_BytesLeft;
    ExitCode m_Code = kDone;
};

// Each takes out what it knows of one tag. The sources have the same names.

void ExtractPicture(const FramedTag& tag, Extraction& extraction);
void ExtractSound(const FramedTag& tag, Extraction& extraction);
void ExtractText(const FramedTag& tag, Extraction& extraction);
void ExtractFonts(Extraction& extraction);
/// `place` is a name for the timeline and frame.
void ExtractScripts(const FramedTag& tag, const std::string& place, Extraction& extraction);

/// The streamed sound of a timeline, tag by tag.
class StreamedSound {
public:
    explicit StreamedSound(std::string timeline) : m_Timeline(std::move(timeline)) {}
    void Take(const FramedTag& tag, Extraction& extraction);
    void Finish(Extraction& extraction);

private:
    std::string m_Timeline;
    unsigned int m_NumStreams = 0;
    unsigned int m_Format = 0;
    unsigned int m_SamplesPerBlock = 0;
    std::size_t m_NumBlocks = 0;
    std::vector<unsigned char> m_Data;  // without what stands around it, ADPCM decoded
};
