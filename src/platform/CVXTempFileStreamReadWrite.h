#pragma once

#include "platform/CVXStreamReadWrite.h"

/// A stream over a file that nobody else sees: it is created readable by its owner alone (mode 0600) in the
/// directory for temporary files and unlinked at once, so that nothing stays behind even after a crash. The
/// directory is that of TMPDIR, or /tmp where that is not set or cannot be used.
class VXPLATFORM_API CVXTempFileStreamReadWrite : public CVXStreamReadWrite {
public:
    /// `Open` answers 0 when no file could be made.
    CVXTempFileStreamReadWrite();
    ~CVXTempFileStreamReadWrite() override;
};
