#pragma once
// Splitting a polygon into pieces of bounded corner count.

#include <functional>
#include <vector>

class VMPolygon;
class VMWorld;
struct VMVertex;

// Receives one piece's corners; answers 0 to go on or a negative code that ends the split.
template <class Vertex>
using PieceSink = std::function<int(const std::vector<Vertex*>& corners)>;

// The split rule of SplitPolygon (below) for the corners of any container (VMVertex,
// VMSkinVertex): each piece goes to addPiece, in the order SplitPolygon adds them. Answers 0,
// -301 when memory runs out, or the first negative answer of addPiece.
template <class Vertex>
int SplitCorners(Vertex* const* corners, int count, int depth, int cornerLimit, const PieceSink<Vertex>& addPiece);

// Appends to the world's polygon list new polygons of at most cornerLimit corners that together
// cover the corner sequence (count corners, winding kept). Each piece takes the split
// attributes of source (material with its use count, name, attribute words, group, plane) and
// joins every vis area that lists source, in both directions; source itself is not touched.
//
// A sequence over the limit is cut along the diagonal whose first piece comes closest to half
// the area (the first such diagonal on ties) and both pieces are split on down to triangles, so
// a polygon over the limit always ends as triangles. Degenerate pieces are dropped silently: an
// area <= 1e-7, or no usable diagonal and no corner closer than sqrt(1e-5) to an earlier kept
// one (otherwise those corners are dropped and the rest is split again). Fewer than 3 corners
// give nothing.
//
// depth is the nesting of this piece in a split under way, 0 for a whole polygon. Answers 0, or
// -301 when memory runs out (the pieces made so far stay in the world).
int SplitPolygon(VMWorld& world, const VMPolygon& source, VMVertex* const* corners, int count, int depth,
                 int cornerLimit);
