#pragma once

#include "bitstream/VXBitStream.h"

// Reads of fields whose type is not the stream's, enums among them. Failure leaves the field as it was, where
// the stream's own reads leave a part of the value.

template <typename Field>
VXErrorCodeEnum VXReadBits(VXBitStream& in, unsigned int count, Field& field) {
    unsigned int value = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(count, value));
    field = static_cast<Field>(value);
    return kVXSuccess;
}

template <typename Field>
VXErrorCodeEnum VXReadWord(VXBitStream& in, Field& field) {
    unsigned short value = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(value));
    field = static_cast<Field>(value);
    return kVXSuccess;
}
