#pragma once
// Which triangles of a world form each strip batch.
//
// A triangle can be stripped when it has three corners, its material belongs to the world, is
// of kind 0, 2 or 5 and does not forbid stripping, and it is listed by no vis area or by exactly
// one. Its pass is 0 outside all vis areas, else 1 + the position of its vis area; within a pass
// the materials follow their list order. A batch takes triangles in list order, all with the
// attributes of its first triangle (the u64 attribute, the first u32 attribute, the low 16 bits
// of the collision flags, the shadow and visibility attributes, the last u32 of the primitive
// base, the group attribute and the name, and with stripping per object the source node).
// With a cube limit a triangle (the first one too) joins only while the batch's bounding box
// with its corners stays within the cube size on x, y and z (inclusive); the others wait.

#include <cstdint>
#include <memory>
#include <vector>

class VMPolygon;
class VMWorld;

// One batch: its triangles in gathering order, and where each sat in the world's polygon list
// when the gathering was set up.
struct StripBatch {
    std::vector<VMPolygon*> Triangles;
    std::vector<int> ListPositions;

    int Count() const { return static_cast<int>(Triangles.size()); }
};

class StripGathering {
public:
    // Indexes the world's polygons; the world must not change its polygon list while the
    // gathering is in use, except for emptying the slots of taken triangles. May throw
    // std::bad_alloc.
    StripGathering(const VMWorld& world, bool stripObject);
    ~StripGathering();
    StripGathering(const StripGathering&) = delete;
    StripGathering& operator=(const StripGathering&) = delete;

    // The (pass, material) pairs that hold any candidate, in pass order, then material order.
    int BucketCount() const;
    int PassOf(int bucket) const;
    int MaterialOf(int bucket) const;

    // Starts the bucket's gatherings of one pass over the vis areas.
    void BeginBucket(int bucket);

    // Takes the next batch of the bucket into batch (emptied first); cubeSize 0 switches the
    // cube limit off. cubeFull tells whether any triangle was left out for the cube. Answers
    // false when no triangle joined.
    bool Gather(int bucket, float cubeSize, StripBatch& batch, bool& cubeFull);

    // Returns the triangle of a one-triangle batch, to be gathered again in a later pass.
    void GiveBack(int bucket, const VMPolygon* triangle);

private:
    void BuildGrid(int group, float cubeSize);

    struct Data;
    std::unique_ptr<Data> m_data;
};
