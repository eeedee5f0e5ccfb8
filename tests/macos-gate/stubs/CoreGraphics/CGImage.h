// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once

// developer.apple.com/documentation/coregraphics/cgimageref (page not seen)
typedef struct CGImage* CGImageRef;
