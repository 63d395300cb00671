#pragma once

#include "platform/CVXStreamReadWrite.h"

/// A memory stream whose medium is full after so many bytes written in all.
class LimitedStream : public CVXStreamReadWrite {
public:
    explicit LimitedStream(int room) : m_Room(room) { SetMode(kWrite); }

    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override {
        if (!IsWriting()) return CVXStreamReadWrite::XferByte(data, count);
        const int done = CVXStreamReadWrite::XferByte(data, count < m_Room ? count : m_Room);
        m_Room -= done;
        return done;
    }

private:
    int m_Room;
};
