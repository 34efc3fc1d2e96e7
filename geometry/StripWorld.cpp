#include "geometry/StripWorld.h"

#include "geometry/CheckTriList.h"
#include "geometry/FixID.h"
#include "geometry/KeepReferencedVertices.h"
#include "geometry/MergeTriLists.h"
#include "geometry/RemoveTriLists.h"
#include "geometry/StitchStrips.h"
#include "geometry/StripBuilder.h"
#include "geometry/StripGathering.h"
#include "geometry/StripSegments.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"
#include "report/Progress.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <new>
#include <tuple>
#include <vector>

namespace {

constexpr int ListsOnly = 4;
constexpr int FewestNeighboursFirst = 2;
constexpr int LookAheadAndStitch = 3;

struct Limits {
    int Method = ListsOnly;
    int MaxLength = 10000;
    int MinLength = 3;
    bool CubeLimit = false;
    bool StripObject = false;
};

using TriListBatch = std::vector<std::unique_ptr<VMTriList>>;

class Stripper {
public:
    Stripper(VMWorld& world, const Limits& limits, StripStatistics& statistics)
        : m_world(world)
        , m_limits(limits)
        , m_statistics(statistics)
        , m_triListCount(world.TriLists.Count())
    {
    }

    // Steps through the buckets, doubling the cube while some triangle did not fit it.
    int StripAll(StripGathering& gathering, float cubeSize)
    {
        for (;;) {
            bool someDidNotFit = false;
            for (int bucket = 0; bucket < gathering.BucketCount(); ++bucket) {
                const int result = StripBucket(gathering, bucket, m_limits.CubeLimit ? cubeSize : 0.0f, someDidNotFit);
                if (result != 0)
                    return result;
            }
            // A cube that has grown to infinity still refuses a NaN corner: stop there.
            if (!m_limits.CubeLimit || !someDidNotFit || !std::isfinite(cubeSize))
                return 0;
            cubeSize *= 2.0f;
        }
    }

    int ListBatchCount() const { return m_listBatchCount; }

private:
    int StripBucket(StripGathering& gathering, int bucket, float cubeSize, bool& someDidNotFit)
    {
        m_statistics.VisAreaNumber = gathering.PassOf(bucket);
        m_statistics.MaterialNumber = gathering.MaterialOf(bucket);
        gathering.BeginBucket(bucket);
        StripBatch batch;
        for (;;) {
            bool cubeFull = false;
            const bool found = gathering.Gather(bucket, cubeSize, batch, cubeFull);
            someDidNotFit = someDidNotFit || cubeFull;
            if (!found)
                return 0;
            // A lone triangle beside a full cube waits for a larger cube, where it may find company.
            if (cubeFull && batch.Count() == 1) {
                gathering.GiveBack(bucket, batch.Triangles.front());
                return 0;
            }
            VMVisArea* area = m_statistics.VisAreaNumber == 0 ? nullptr : m_world.VisAreas.Get(m_statistics.VisAreaNumber - 1);
            const int result = StripOneBatch(batch, area);
            if (result != 0)
                return result;
            m_strippedCount += batch.Count();
            PhaseProgress(m_strippedCount, m_world.Polygons.Count());
        }
    }

    int StripOneBatch(const StripBatch& gathered, VMVisArea* area)
    {
        GeometryLog("VA: %d / %d, Mat: %d / %d, Poly: %d, Seg: %d, Tls: %d\r\n", m_statistics.VisAreaNumber,
                    m_statistics.VisAreaCount, m_statistics.MaterialNumber, m_statistics.MaterialCount,
                    gathered.Count(), 0, m_triListCount);

        const std::vector<VMPolygon*>& batch = gathered.Triangles;
        TriListBatch triLists;
        if (m_limits.Method == ListsOnly) {
            ++m_listBatchCount;
            if (EmitListRuns(batch, m_limits.MaxLength, triLists) != 0)
                return -301;
        } else {
            StripBatchOutput output;
            ForgetPreviousUseCounts();
            const int result = BuildStrips(batch, m_limits.Method, m_limits.MinLength, m_world.Vertices.Count(), output);
            if (result != 0)
                return result;
            RememberUseCounts(batch);
            if (EmitSegments(output, batch, m_limits.MaxLength, triLists) != 0)
                return -301;
        }

        const bool joinPieces = (m_limits.Method == FewestNeighboursFirst || m_limits.Method == LookAheadAndStitch)
            && !m_limits.CubeLimit;
        if (joinPieces)
            JoinPieces(std::move(triLists), *batch.front(), area);
        else
            Place(std::move(triLists), area);

        // The vis areas' polygon lists were emptied up front, so a destroyed triangle has no
        // area left to leave.
        for (int index = 0; index < gathered.Count(); ++index) {
            batch[static_cast<size_t>(index)]->Owners.Clear();
            m_world.Polygons.RemoveLeaveEmpty(gathered.ListPositions[static_cast<size_t>(index)]);
        }
        return 0;
    }

    // Adds the tri-lists to the world and the vis area; answers the world slot of each.
    std::vector<int> Place(TriListBatch triLists, VMVisArea* area)
    {
        std::vector<int> slots;
        slots.reserve(triLists.size());
        for (std::unique_ptr<VMTriList>& triList : triLists) {
            VMTriList& added = *triList;
            slots.push_back(m_world.TriLists.Count());
            m_world.TriLists.Add(std::move(triList));
            ++m_triListCount;
            if (area != nullptr)
                area->Link(added);
        }
        return slots;
    }

    // Stitches the batch's strips, then merges its short pieces with the lists that earlier
    // batches of the same material, vis area and (with StripObject) source node left in the
    // world, so that batches split by their other attributes still end in few lists.
    void JoinPieces(TriListBatch triLists, const VMPolygon& reference, VMVisArea* area)
    {
        const int shortStrip = 3 * m_limits.MinLength;
        TriListBatch stitched;
        TriListBatch rest;
        StitchStrips(std::move(triLists), shortStrip, stitched, rest);
        Place(std::move(stitched), area);

        std::vector<int>& earlier =
            m_mergeable[{reference.Material(), area, m_limits.StripObject ? reference.SourceNode : 0u}];
        TriListBatch candidates;
        candidates.reserve(earlier.size() + rest.size());
        for (int slot : earlier) {
            candidates.push_back(m_world.TriLists.TakeLeaveEmpty(slot));
            if (area != nullptr)
                area->Unlink(*candidates.back());
            --m_triListCount;
        }
        for (std::unique_ptr<VMTriList>& piece : rest)
            candidates.push_back(std::move(piece));
        TriListBatch kept;
        TriListBatch merged;
        MergeTriLists(std::move(candidates), shortStrip, kept, merged);
        Place(std::move(kept), area);
        earlier = Place(std::move(merged), area);
    }

    void ForgetPreviousUseCounts()
    {
        for (VMVertex* vertex : m_countedVertices)
            vertex->UseCount = 0;
        m_countedVertices.clear();
    }

    void RememberUseCounts(const std::vector<VMPolygon*>& batch)
    {
        for (const VMPolygon* triangle : batch)
            m_countedVertices.insert(m_countedVertices.end(), triangle->Corners.begin(), triangle->Corners.end());
    }

    VMWorld& m_world;
    Limits m_limits;
    StripStatistics& m_statistics;
    std::vector<VMVertex*> m_countedVertices;
    // The world slots of the merged lists, by material, vis area and source node.
    std::map<std::tuple<const VMMaterial*, const VMVisArea*, uint32_t>, std::vector<int>> m_mergeable;
    int m_triListCount = 0;
    int m_listBatchCount = 0;
    int64_t m_strippedCount = 0;
};

Limits LimitsOf(const StripParams& params)
{
    Limits limits;
    limits.Method = params.StripPerformance;
    limits.MaxLength = std::clamp(params.MaxStripLength, 4, MaxTriListCorners / 3);
    limits.MinLength = std::clamp(params.MinStripLength, 3, 10000);
    limits.CubeLimit = params.MaxStripSize > 0.001f;
    limits.StripObject = params.StripObject;
    return limits;
}

// The stripper empties the vis areas' polygon lists up front, since taking thousands of
// triangles out of an area one by one would search its list each time; the polygons kept their
// owners, so the lists are rebuilt from them.
void RelistPolygons(VMWorld& world)
{
    world.Polygons.Compact();
    for (VMPolygon* polygon : world.Polygons)
        for (VMVisArea* area : polygon->Owners)
            area->AddPolygon(polygon);
}

void CheckAllTriLists(VMWorld& world)
{
    for (int index = 0; index < world.TriLists.Count(); ++index) {
        VMTriList* triList = world.TriLists.Get(index);
        if (CheckTriList(*triList, true) != 0)
            GeometryLog("Strip %d FAILED the sanity check\r\n", index);
    }
}

void DestroyTriList(VMWorld& world, int index)
{
    VMTriList* triList = world.TriLists.Get(index);
    for (VMVisArea* area : triList->Owners)
        area->RemoveTriList(triList);
    triList->Owners.Clear();
    world.TriLists.RemoveLeaveEmpty(index);
}

int ReturnSingleTriangles(VMWorld& world)
{
    for (int index = 0; index < world.TriLists.Count(); ++index) {
        VMTriList* triList = world.TriLists.Get(index);
        if (triList->CornerCount() != 3)
            continue;
        std::unique_ptr<VMPolygon> triangle =
            VMWorld::NewTriangle(triList->Corners[0], triList->Corners[1], triList->Corners[2]);
        if (!triangle)
            return -301;
        triangle->CopyAttributesFrom(*triList);
        triangle->Group = triList->Group;
        VMPolygon& added = *triangle;
        if (world.Polygons.Add(std::move(triangle)) != 0)
            return -301;
        for (VMVisArea* area : triList->Owners)
            area->Link(added);
        DestroyTriList(world, index);
    }
    world.TriLists.Compact();
    return 0;
}

int Finish(VMWorld& world, StripStatistics& statistics, int listBatchCount)
{
    GeometryLog("%i batches for listing prepared.\r\n", listBatchCount);
    GeometryLog("Sanity check...\r\n");
    world.Polygons.Compact();
    world.TriLists.Compact();
    CheckAllTriLists(world);
    RelistPolygons(world);

    if (KeepReferencedVertices(world) != 0)
        return -301;
    GeometryLog("Memory cleanup...\r\n");

    world.Enumerate();
    if (ReturnSingleTriangles(world) != 0)
        return -301;
    world.Enumerate();

    GeometryLog("Re-computing ID vertices...\r\n");
    if (FixID(world, 0.0f) < 0)
        return -301;
    statistics.TriListCount = world.TriLists.Count();
    GeometryLog("%d strips and lists generated\r\n", statistics.TriListCount);
    return 0;
}

int Strip(VMWorld& world, const Limits& limits, float cubeSize, StripStatistics& statistics)
{
    GeometryLog("Stripping started...\r\n");
    if (RemoveTriLists(world) != 0)
        return -301;
    world.Polygons.Compact();
    statistics.VisAreaCount = world.VisAreas.Count();
    statistics.MaterialCount = world.Materials.Count();

    // Each batch's connectivity stands for a world of all vertices in which only the batch's
    // corners count as uses.
    if (limits.Method != ListsOnly)
        for (VMVertex* vertex : world.Vertices)
            if (vertex != nullptr)
                vertex->UseCount = 0;

    StripGathering gathering(world, limits.StripObject);
    for (VMVisArea* area : world.VisAreas)
        if (area != nullptr)
            area->ClearPolygons();

    Stripper stripper(world, limits, statistics);
    int result = 0;
    try {
        result = stripper.StripAll(gathering, cubeSize);
    } catch (const std::bad_alloc&) {
        result = -301;
    }
    if (result != 0) {
        world.TriLists.Compact();
        RelistPolygons(world);
        return result;
    }
    return Finish(world, statistics, stripper.ListBatchCount());
}

} // namespace

int StripWorld(VMWorld& world, const StripParams& params, StripStatistics* statistics)
{
    const Limits limits = LimitsOf(params);
    if (limits.Method < 1 || limits.Method > ListsOnly)
        return 0;
    StripStatistics ownStatistics;
    StripStatistics& kept = statistics != nullptr ? *statistics : ownStatistics;
    try {
        return Strip(world, limits, params.MaxStripSize, kept);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
