// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once

// developer.apple.com/documentation/coregraphics/cgimage, of the name; a pointer to a structure:
//   docs.rs/core-graphics/0.20.0/core_graphics/sys
typedef struct CGImage* CGImageRef;
