#pragma once

/// Positions and lengths, in pixels unless a declaration says otherwise.
using VXReal = double;

/// A rectangle of reals, in pixels. Nothing keeps left at or below right.
struct VXRect {
    VXReal left = 0.0;
    VXReal top = 0.0;
    VXReal right = 0.0;
    VXReal bottom = 0.0;
};

// The library's own code drops no result without a word. Hosts may.
#if defined(VXPLATFORM_BUILD) || defined(VXSWF_BUILD)
#define VX_RESULT [[nodiscard]]
#else
#define VX_RESULT
#endif

/// Result of an operation: 0 is good, anything else says what failed. Codes pass through unchanged from
/// whoever found the fault, so a value without a name here is possible.
enum VX_RESULT VXErrorCodeEnum : int {
    kVXSuccess = 0,
    kVXFailure = 1,             ///< data ended early, a write did not fit, or an argument was null
    kVXCompressionFailed = 44,  ///< a movie's body could not be deflated on its way out
};

/// Leaves the current function with the code of a step that failed.
#define VX_RETURN_IF_FAILED(step)                                          \
    do {                                                                   \
        if (const VXErrorCodeEnum vxCode = (step); vxCode != kVXSuccess) { \
            return vxCode;                                                 \
        }                                                                  \
    } while (false)

/// Drops a result on purpose; the reason stands beside the call.
inline void VXIgnore(VXErrorCodeEnum) {}
