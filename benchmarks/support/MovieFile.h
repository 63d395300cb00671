#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// A plain movie in a temporary file that goes with the object. It is made in a process of its own, so that
/// the one which starts the measured runs holds no memory that they could find warm.
class MovieFile {
public:
    /// Writes a header, the tags that `make` gives, with their own headers, and an end tag.
    explicit MovieFile(const std::function<std::vector<unsigned char>()>& make);
    ~MovieFile();
    MovieFile(const MovieFile&) = delete;
    MovieFile& operator=(const MovieFile&) = delete;

    const char* GetPath() const { return m_Path.c_str(); }
    std::size_t GetSize() const { return m_Size; }
    /// The whole movie, read anew.
    std::vector<unsigned char> Read() const;

    /// `count` raw tags with bodies of 0 to 20 bytes.
    static MovieFile OfSmallTags(std::size_t count);
    /// `count` raw tags of `size` bytes each, noise that does not compress, or text that does.
    static MovieFile OfLargeTags(std::size_t count, std::size_t size, bool isText);

private:
    std::string m_Path;
    std::size_t m_Size = 0;
};

/// Appends a tag with the header that its length takes.
void AppendTag(std::vector<unsigned char>& tags, unsigned int type, const unsigned char* body,
               std::size_t size);

/// The plain reference that loads are measured against: walks the headers of a movie and does one `malloc`
/// and one `memcpy` for each tag. Frees nothing. Answers the number of tags.
std::size_t TagCopy(const unsigned char* movie, std::size_t size);
