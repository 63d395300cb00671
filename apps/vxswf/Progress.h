#pragma once

#include <string>

#include "vxswf.h"

/// Shows on standard error how far a transfer is: `done` bytes, of `all` when that is not 0. Only on a
/// terminal, only once the command has run for a second, and not more often than the eye can follow.
void ShowProgress(const char* step, const std::string& file, unsigned long long done, unsigned long long all);
/// Takes the line away, if one is there. Whoever writes to a terminal calls this first.
void EraseProgress();

/// A stream over a file that shows how far it is written.
class ProgressStream : public CVXStreamReadWrite {
public:
    /// Takes over the descriptor.
    ProgressStream(int descriptor, const std::string& file) : CVXStreamReadWrite(descriptor), m_File(file) {}

    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override;

private:
    std::string m_File;
};
