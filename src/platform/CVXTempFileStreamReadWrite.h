#pragma once

#include "platform/CVXStreamReadWrite.h"

/// A stream over a file that nobody else sees: its owner alone may read it, and it has no name, so that nothing
/// stays behind even after a crash. It lies in the directory TMPDIR where that can be used, else in /tmp; on
/// Windows where the system keeps temporary files.
class VXPLATFORM_API CVXTempFileStreamReadWrite : public CVXStreamReadWrite {
public:
    /// `Open` answers 0 when no file could be made.
    CVXTempFileStreamReadWrite();
    ~CVXTempFileStreamReadWrite() override;
};
