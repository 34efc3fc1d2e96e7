#pragma once
// Regroups the triangles of a world into tri-lists (triangle strips or lists) that the writers
// emit as batches. A batch never mixes materials, vis areas or rendering attributes, nor, with
// StripObject, Maya source nodes; it can be held to a bounding cube and a maximum length.
//
// StripPerformance chooses the method: 4 builds lists only; 1, 2 and 3 build strips, 2 starting
// each strip at the triangle with the fewest free neighbours and 1 and 3 choosing the start by
// look-ahead; 2 and 3 then stitch strips together and merge the short pieces into lists when no
// bounding cube applies, together with the lists that earlier batches of the same material, vis
// area and (with StripObject) source node made. Any other value leaves the world untouched.
//
// MaxStripLength is clamped to 4..10000 triangles and MinStripLength to 3..10000; a strip with
// fewer than 3 x MinStripLength corners counts as short. A MaxStripSize above 0.001 limits every
// batch to a cube of that size; when some triangle did not fit, the size is doubled and the
// triangles not yet taken are gathered again.
//
// Afterwards every stripped triangle has left the polygon list, a tri-list of a single triangle
// has become a polygon again (one left without triangles, by the sanity check's repair or by a
// merge of degenerate pieces, stays), every vertex in the list is referenced by a primitive (the others
// are freed), the world is enumerated and the ID links are rebuilt with radius 0. Triangles
// that cannot be stripped (other corner counts, material kind 1 or no-stripping, several vis
// areas) stay polygons. Progress and statistics go to the geometry log.
//
// Answers 0, or -301 when memory runs out: the world then keeps its polygons and the
// tri-lists of the batches finished so far.

class VMWorld;

struct StripParams {
    int StripPerformance = 4;
    bool StripObject = false;
    float MaxStripSize = 1024.0f;
    int MaxStripLength = 10000;
    int MinStripLength = 0;
};

// What the "Triangle stripping and listing statistics" issue reports: the vis area (0 for the
// triangles outside all vis areas, else 1 + its position) and material of the last batch with
// their counts, and the number of tri-lists made.
struct StripStatistics {
    int VisAreaNumber = 0;
    int VisAreaCount = 0;
    int MaterialNumber = 0;
    int MaterialCount = 0;
    int TriListCount = 0;
};

int StripWorld(VMWorld& world, const StripParams& params, StripStatistics* statistics = nullptr);
