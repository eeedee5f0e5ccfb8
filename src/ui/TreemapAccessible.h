#pragma once

namespace kestrune::TreemapAccessible {

/// Makes screen readers see every TreemapView as a list with one item a tile. Only the first call does anything.
void install();

}  // namespace kestrune::TreemapAccessible
