#pragma once

// Whatever declares a class of the libraries sees this one, so that the first error of an older mode says why.
#if defined(_MSVC_LANG)
#define VX_LANGUAGE _MSVC_LANG
#else
#define VX_LANGUAGE __cplusplus
#endif
#if VX_LANGUAGE < 202002L
#error "vxswf needs C++20: compile with -std=c++20, or set CMAKE_CXX_STANDARD to 20."
#endif
#undef VX_LANGUAGE

/// `VXPLATFORM_API` marks what the platform library shows, `VXSWF_API` what the movie library shows. Everything
/// else is hidden, so that two libraries in one process never meet in a symbol that neither meant to share.
/// Static libraries define VXSWF_STATIC, for themselves and for what is linked with them.
#if !defined(_WIN32)
#define VX_SHOWN __attribute__((visibility("default")))
#define VX_TAKEN VX_SHOWN
#elif defined(VXSWF_STATIC)
#define VX_SHOWN
#define VX_TAKEN
#else
#define VX_SHOWN __declspec(dllexport)
#define VX_TAKEN __declspec(dllimport)
#endif

#ifdef VXPLATFORM_BUILD
#define VXPLATFORM_API VX_SHOWN
#else
#define VXPLATFORM_API VX_TAKEN
#endif

#ifdef VXSWF_BUILD
#define VXSWF_API VX_SHOWN
#else
#define VXSWF_API VX_TAKEN
#endif
