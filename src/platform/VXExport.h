#pragma once

/// Marks what the platform library shows. Everything else in it is hidden, so that two libraries in one
/// process never meet in a symbol that neither meant to share.
#define VXPLATFORM_API __attribute__((visibility("default")))

/// The same for the movie library.
#define VXSWF_API __attribute__((visibility("default")))
