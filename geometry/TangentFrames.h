#pragma once
// A tangent-frame generator: per-vertex tangents and binormals from the texture coordinates of
// the triangles around each vertex, splitting a vertex where its triangles disagree.
//
// The settings are those the model writer needs and are fixed here: normals are taken as given,
// never recomputed; each triangle contributes its tangent and binormal weighted by its area;
// vertices that are already distinct stay distinct, even at one position (existing splits are
// respected); two triangles at a vertex share a frame while both their tangents and their
// binormals point less than 90 degrees apart (crease cosines of 0), so a mirrored texture seam
// splits the vertex; no repair for cylindrical texture wrapping.
//
// Per triangle, with edges e1 = p1 - p0, e2 = p2 - p0 and texture deltas (s1, t1), (s2, t2):
// T = (t2 e1 - t1 e2) and B = (s1 e2 - s2 e1), both divided by s1 t2 - s2 t1 (Lengyel,
// "Computing Tangent Space Basis Vectors for an Arbitrary Mesh", 2001), then normalised and
// weighted by the triangle's area. A triangle whose texture mapping is degenerate contributes
// nothing and joins whatever frame its vertex has.

#include <cstdint>
#include <vector>

struct TangentFrameVertex {
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Normal[3] = {0.0f, 0.0f, 0.0f};
    float S = 0.0f;
    float T = 0.0f;
    // Filled by the generator: the sums of the area-weighted unit vectors, not normalised.
    float Tangent[3] = {0.0f, 0.0f, 0.0f};
    float Binormal[3] = {0.0f, 0.0f, 0.0f};
};

struct TangentFrames {
    // The input vertices first, in their order, each with the frame of its first group of
    // triangles; then one vertex per further group, in the order met.
    std::vector<TangentFrameVertex> Vertices;
    // Three per triangle, into Vertices.
    std::vector<uint32_t> Indices;
    // Per output vertex, the input vertex it stems from (itself for the first ones).
    std::vector<uint32_t> Sources;
};

// indices: three per triangle, into vertices. An index outside the vertex list leaves its
// triangle out of every frame and unchanged in the output. Throws std::bad_alloc when memory runs out.
TangentFrames GenerateTangentFrames(const std::vector<TangentFrameVertex>& vertices,
                                    const std::vector<uint32_t>& indices);
