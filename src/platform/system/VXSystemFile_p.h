#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

/// An open file, without a buffer. What standard C++ cannot do with one stands in a source for each kind of
/// system; VXSystemFile_Portable.cpp serves any other with the standard library alone, which holds files of
/// 2 GiB where a `long` has 32 bits and cuts none that has no path.
///
/// Bytes pass unchanged ("binary"), and programs that the process starts do not inherit the file.
class VXSystemFile {
public:
    /// Not open.
    VXSystemFile() = default;

    /// For reading; never waits for the other end of a pipe. `path` is in the system's own encoding of file
    /// names, and UTF-8 on Windows.
    static VXSystemFile OpenExisting(const char* path);
    /// For reading and writing; the file is made or cut to nothing.
    static VXSystemFile CreateOrEmpty(const char* path);
    /// An empty file that its user alone can read and that is gone when it is closed or the process ends. It
    /// lies in the directory TMPDIR where that can be used, else in the system's own for temporary files.
    static VXSystemFile OpenTemporary();
    /// Takes the descriptor of an open file over. One that cannot be used is closed.
    static VXSystemFile Adopt(int descriptor);

    bool IsOpen() const { return m_Handle != nullptr; }
    bool IsWritable() const { return m_IsWritable; }
    /// A plain file, neither a device nor a pipe.
    bool IsRegular() const;
    /// In bytes; −1 for a directory and for what has no positions.
    std::int64_t GetSize() const;
    /// Answers how many bytes were read: fewer than `count` at the end of the file, or with `isFailed` set.
    std::size_t ReadAt(std::uint64_t offset, unsigned char* data, std::size_t count, bool& isFailed);
    /// Answers how many bytes were written: fewer than `count` with `isFailed` set.
    std::size_t WriteAt(std::uint64_t offset, const unsigned char* data, std::size_t count, bool& isFailed);
    bool Truncate(std::uint64_t size);
    /// False when the system reports that written data may not have arrived.
    bool Close();

private:
    VXSystemFile(std::FILE* handle, bool isWritable, const char* path = "");
    bool MoveTo(std::uint64_t offset);

    struct Closer {
        void operator()(std::FILE* handle) const { std::fclose(handle); }
    };
    std::unique_ptr<std::FILE, Closer> m_Handle;
    bool m_IsWritable = false;
    std::string m_Path;  // where the system cuts a file by its path
};
