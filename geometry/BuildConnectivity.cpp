#include "geometry/BuildConnectivity.h"

#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <span>

namespace {

// Corners of all polygons in one array, each corner given the number of the vertex it counts
// as; polygon p owns the corners from CornerStart[p] to CornerStart[p + 1].
struct NumberedCorners {
    std::vector<int> CornerStart;
    std::vector<uint32_t> Numbers;
    uint32_t NumberCount = 0;
};

// The polygons that use each vertex number, in ascending list order, so that the last common
// entry of two lists is found from their ends.
class PolygonsPerVertex {
public:
    // A number's list holds at most room[number] polygons (no limit when room is empty);
    // answers how many entries found no room.
    int Fill(const NumberedCorners& corners, const std::vector<int>& room)
    {
        std::vector<int> lastPolygon(corners.NumberCount, -1);
        std::vector<int> wanted(corners.NumberCount, 0);
        ForEachEntry(corners, lastPolygon, [&](uint32_t number, int) { ++wanted[number]; });

        m_start.assign(corners.NumberCount + 1, 0);
        for (uint32_t number = 0; number < corners.NumberCount; ++number) {
            const int held = room.empty() ? wanted[number] : std::min(wanted[number], room[number]);
            m_start[number + 1] = m_start[number] + held;
        }
        m_polygons.assign(static_cast<size_t>(m_start[corners.NumberCount]), 0);

        std::vector<int>& filled = wanted;
        std::fill(filled.begin(), filled.end(), 0);
        std::fill(lastPolygon.begin(), lastPolygon.end(), -1);
        int overflowCount = 0;
        ForEachEntry(corners, lastPolygon, [&](uint32_t number, int polygon) {
            const int slot = m_start[number] + filled[number];
            if (slot == m_start[number + 1]) {
                GeometryLog("connectivity: bad: overflow!\r\n");
                ++overflowCount;
                return;
            }
            m_polygons[static_cast<size_t>(slot)] = polygon;
            ++filled[number];
        });
        return overflowCount;
    }

    // The polygon with the highest list position, other than self, that both lists hold; -1
    // when there is none.
    int LastCommon(uint32_t a, uint32_t b, int self) const
    {
        std::span<const int> shorter = Of(a);
        std::span<const int> longer = Of(b);
        if (shorter.size() > longer.size())
            std::swap(shorter, longer);
        for (auto it = shorter.rbegin(); it != shorter.rend(); ++it)
            if (*it != self && std::binary_search(longer.begin(), longer.end(), *it))
                return *it;
        return -1;
    }

private:
    // Each polygon enters the list of each of its vertex numbers once.
    template <class Visit>
    static void ForEachEntry(const NumberedCorners& corners, std::vector<int>& lastPolygon, Visit visit)
    {
        const int polygonCount = static_cast<int>(corners.CornerStart.size()) - 1;
        for (int polygon = 0; polygon < polygonCount; ++polygon) {
            for (int corner = corners.CornerStart[polygon]; corner < corners.CornerStart[polygon + 1]; ++corner) {
                const uint32_t number = corners.Numbers[static_cast<size_t>(corner)];
                if (lastPolygon[number] == polygon)
                    continue;
                lastPolygon[number] = polygon;
                visit(number, polygon);
            }
        }
    }

    std::span<const int> Of(uint32_t number) const
    {
        return std::span<const int>(m_polygons).subspan(static_cast<size_t>(m_start[number]),
                                                        static_cast<size_t>(m_start[number + 1] - m_start[number]));
    }

    std::vector<int> m_start;
    std::vector<int> m_polygons;
};

// One entry per corner: the list position of the polygon across the edge that starts there.
std::vector<int> FindNeighbours(const NumberedCorners& corners, const PolygonsPerVertex& lists)
{
    std::vector<int> neighbours(corners.Numbers.size(), -1);
    const int polygonCount = static_cast<int>(corners.CornerStart.size()) - 1;
    for (int polygon = 0; polygon < polygonCount; ++polygon) {
        const int first = corners.CornerStart[polygon];
        const int end = corners.CornerStart[polygon + 1];
        for (int corner = first; corner < end; ++corner) {
            const int next = corner + 1 == end ? first : corner + 1;
            const uint32_t a = corners.Numbers[static_cast<size_t>(corner)];
            const uint32_t b = corners.Numbers[static_cast<size_t>(next)];
            if (a != b)
                neighbours[static_cast<size_t>(corner)] = lists.LastCommon(a, b, polygon);
        }
    }
    return neighbours;
}

void LogMemory(long long listEntries, long long cornerCount)
{
    const long long listBytes = listEntries * static_cast<long long>(sizeof(VMPolygon*));
    const long long cornerBytes = cornerCount * static_cast<long long>(sizeof(VMPolygon*));
    GeometryLog("connections: mem for pList: %ik (%imb)\r\n", static_cast<int>(listBytes / 1024),
                static_cast<int>(listBytes / 1048576));
    GeometryLog("connections: mem for p->connection lists: %ik\r\n", static_cast<int>(cornerBytes / 1024));
}

bool IsListedVertex(const VMWorld& world, const VMVertex* vertex)
{
    return vertex != nullptr && vertex->Index < static_cast<uint32_t>(world.Vertices.Count())
        && world.Vertices.Get(static_cast<int>(vertex->Index)) == vertex;
}

// Numbers every corner of the world; false when a corner is not a vertex of the world's list.
bool NumberWorldCorners(VMWorld& world, bool useIdLinks, NumberedCorners& corners)
{
    uint32_t position = 0;
    for (VMVertex* vertex : world.Vertices) {
        if (vertex != nullptr) {
            vertex->Index = position;
            vertex->UseCount = 0;
        }
        ++position;
    }
    corners.NumberCount = position;

    corners.CornerStart.reserve(static_cast<size_t>(world.Polygons.Count()) + 1);
    corners.CornerStart.push_back(0);
    for (VMPolygon* polygon : world.Polygons) {
        for (VMVertex* vertex : polygon->Corners) {
            if (!IsListedVertex(world, vertex))
                return false;
            ++vertex->UseCount;
            const VMVertex* counted = useIdLinks && IsListedVertex(world, vertex->MergeLink) ? vertex->MergeLink : vertex;
            corners.Numbers.push_back(counted->Index);
        }
        corners.CornerStart.push_back(static_cast<int>(corners.Numbers.size()));
    }
    return true;
}

int ConnectWorld(VMWorld& world, bool useIdLinks)
{
    world.Polygons.Compact();
    NumberedCorners corners;
    if (!NumberWorldCorners(world, useIdLinks, corners))
        return -1;

    std::vector<int> room(corners.NumberCount, 0);
    long long listEntries = 0;
    for (uint32_t number = 0; number < corners.NumberCount; ++number) {
        const VMVertex* vertex = world.Vertices.Get(static_cast<int>(number));
        room[number] = vertex == nullptr ? 0 : static_cast<int>(vertex->UseCount) + 2;
        listEntries += room[number];
    }
    LogMemory(listEntries, static_cast<long long>(corners.Numbers.size()));

    uint32_t position = 0;
    for (VMPolygon* polygon : world.Polygons) {
        polygon->Index = position++;
        polygon->Neighbours.assign(polygon->Corners.size(), nullptr);
    }

    PolygonsPerVertex lists;
    if (lists.Fill(corners, room) > 0) {
        GeometryLog("connectivity: returning error due to overflow\r\n");
        return -1;
    }
    const std::vector<int> neighbours = FindNeighbours(corners, lists);
    size_t corner = 0;
    for (VMPolygon* polygon : world.Polygons)
        for (VMPolygon*& neighbour : polygon->Neighbours) {
            const int across = neighbours[corner++];
            neighbour = across < 0 ? nullptr : world.Polygons.Get(across);
        }
    return 0;
}

int ConnectBatch(const std::vector<VMPolygon*>& triangles, int vertexListCount, std::vector<int>& neighbours)
{
    constexpr uint32_t Unnumbered = UINT32_MAX;
    for (const VMPolygon* triangle : triangles)
        for (VMVertex* vertex : triangle->Corners)
            vertex->State = Unnumbered;

    NumberedCorners corners;
    corners.CornerStart.reserve(triangles.size() + 1);
    corners.Numbers.reserve(triangles.size() * 3);
    corners.CornerStart.push_back(0);
    for (const VMPolygon* triangle : triangles) {
        for (VMVertex* vertex : triangle->Corners) {
            if (vertex->State == Unnumbered) {
                vertex->State = corners.NumberCount++;
                vertex->UseCount = 0;
            }
            ++vertex->UseCount;
            corners.Numbers.push_back(vertex->State);
        }
        corners.CornerStart.push_back(static_cast<int>(corners.Numbers.size()));
    }
    LogMemory(static_cast<long long>(corners.Numbers.size()) + 2LL * vertexListCount,
              static_cast<long long>(corners.Numbers.size()));

    PolygonsPerVertex lists;
    lists.Fill(corners, {});
    neighbours = FindNeighbours(corners, lists);
    return 0;
}

} // namespace

int BuildConnectivity(VMWorld& world, bool useIdLinks)
{
    try {
        return ConnectWorld(world, useIdLinks);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}

int BuildBatchConnectivity(const std::vector<VMPolygon*>& triangles, int vertexListCount, std::vector<int>& neighbours)
{
    try {
        return ConnectBatch(triangles, vertexListCount, neighbours);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
