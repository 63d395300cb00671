#pragma once

#include <cstddef>
#include <string>

// What the command needs of the system beyond standard C++ and the library, one source for each system. A
// call that fails leaves its reason in `errno`.

/// To be called before anything else. Writes that find no reader or no room fail from then on instead of
/// ending the program, and a signal that ends it removes the temporary file of an `OutputFile` first.
void PrepareProcess();
/// Whether somebody looks at standard error.
bool IsErrorATerminal();

/// The way of a result to the file of a given name, which gets it whole or not at all.
///
/// A new or regular file is replaced: the result is collected in a temporary file in the same directory, which
/// takes the name in the end. Symbolic links are followed and stay. The mode is kept, and so are owner and
/// group as far as the system allows; without them the file loses its set-ID bits. Standard output, whatever
/// is reached through /dev or /proc, and what is not a regular file are written to and never replaced: they
/// take a result that is collected in memory, from front to end. There is one of these at a time.
///
///     OutputFile file;
///     if (!file.Open(name)) ...            // nothing has changed
///     if (file.IsReplaced()) {
///         ...                              // fill file.TakeDescriptor()
///         if (!file.Commit()) ...          // only now the name has changed hands
///     } else if (!file.Write(data, size)) ...
class OutputFile {
public:
    OutputFile() = default;
    /// Removes a temporary file that was not committed.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Finds out what stands behind `name`, `-` being standard output, and makes the temporary file.
    bool Open(const std::string& name);
    bool IsReplaced() const { return m_Descriptor >= 0; }
    /// Whether the file that is replaced has more names, which go on leading to its old contents.
    bool HasOtherNames() const { return m_HasOtherNames; }

    /// The temporary file, still empty, under a descriptor that the caller closes; −1 on failure.
    int TakeDescriptor() const;
    /// Brings the temporary file to the disk and gives it the name.
    bool Commit();

    /// Writes to what is not replaced. May be called for one piece after the other.
    bool Write(const unsigned char* data, std::size_t size);

private:
    bool OpenTarget();

    std::string m_Place;         // behind all links
    int m_Target = -1;           // what `Write` writes to, once it is open
    int m_Borrowed = -1;         // the descriptor that the name stands for
    int m_Descriptor = -1;       // the temporary file
    unsigned int m_OldUser = 0;  // of the file that is replaced
    unsigned int m_OldGroup = 0;
    unsigned int m_Mode = 0;
    bool m_IsNew = true;
    bool m_HasOtherNames = false;
};
