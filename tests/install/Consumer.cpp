// Makes the smallest movie and compares what comes out with the bytes that it must have.
#include <platform/CVXStreamReadWrite.h>
#include <vxswf.h>

#include <cstdio>
#include <cstring>

int main() {
    VXFlintFile movie;
    movie.SetFlintVersion(8);
    movie.SetFrameRate(12);
    movie.SetFrameCount(1);

    CVXStreamReadWrite stream;
    stream.SetMode(IVXStream::kWrite);
    if (movie.DumpToStream(&stream) != kVXSuccess) {
        std::fputs("the dump failed\n", stderr);
        return 1;
    }

    static constexpr unsigned char kExpected[] = {
        'F', 'W', 'S', 8,  // plain, version 8
        15,  0,   0,   0,  // length
        0,                 // frame rectangle of width 0
        0,   12,           // 12 frames a second
        1,   0,            // 1 frame
        0,   0,            // end tag
    };
    if (stream.GetMemorySize() != sizeof(kExpected) ||
        std::memcmp(stream.GetMemory(), kExpected, sizeof(kExpected)) != 0) {
        std::fprintf(stderr, "the movie is not the expected one, %zu bytes\n", stream.GetMemorySize());
        return 1;
    }
    return 0;
}
