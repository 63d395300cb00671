#include "platform/CVXTempFileStreamReadWrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

/// A descriptor that the caller owns, or −1.
int OpenUnnamedFileIn(const std::string& directory) {
    int descriptor = open(directory.c_str(), O_TMPFILE | O_RDWR | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor >= 0) return descriptor;

    // Not every file system makes files without a name.
    std::string name = directory + "/vxtempXXXXXX";
    descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0) unlink(name.c_str());
    return descriptor;
}

int OpenUnnamedFile() {
    // In a program with raised rights the environment does not choose the place.
    const char* const chosen = secure_getenv("TMPDIR");
    const int descriptor = chosen != nullptr && *chosen != '\0' ? OpenUnnamedFileIn(chosen) : -1;
    return descriptor >= 0 ? descriptor : OpenUnnamedFileIn("/tmp");
}

}  // namespace

CVXTempFileStreamReadWrite::CVXTempFileStreamReadWrite() : CVXStreamReadWrite(OpenUnnamedFile()) {}

CVXTempFileStreamReadWrite::~CVXTempFileStreamReadWrite() = default;
