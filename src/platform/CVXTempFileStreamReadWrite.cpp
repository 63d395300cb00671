#include "platform/CVXTempFileStreamReadWrite.h"

#include "platform/VXStreamMedium_p.h"

CVXTempFileStreamReadWrite::CVXTempFileStreamReadWrite()
    : CVXStreamReadWrite(std::make_unique<VXFileMedium>(VXSystemFile::OpenTemporary())) {}

CVXTempFileStreamReadWrite::~CVXTempFileStreamReadWrite() = default;
