#include "bitstream/VXBitRun_p.h"

// No write of bits reports a failure.

void VXBitRun::WriteWide(VXBitStream& out, unsigned int value, unsigned int count) {
    VXIgnore(out.WriteBits(value, count));
}

void VXBitRun::WriteSignedWide(VXBitStream& out, int value, unsigned int count) {
    VXIgnore(out.WriteSBits(value, count));
}
