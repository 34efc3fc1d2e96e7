#include "geometry/StripBuilder.h"

#include "geometry/BuildConnectivity.h"
#include "model/VMPolygon.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <queue>

namespace {

constexpr int None = -1;

int NextEdge(int edge) { return edge == 2 ? 0 : edge + 1; }
int PreviousEdge(int edge) { return edge == 0 ? 2 : edge - 1; }

// A start edge and its score; the heap's top is the highest score, then the earliest triangle,
// then the lowest edge.
struct Candidate {
    int Score;
    int Triangle;
    int Edge;
};

struct LowerPriority {
    bool operator()(const Candidate& a, const Candidate& b) const
    {
        if (a.Score != b.Score)
            return a.Score < b.Score;
        if (a.Triangle != b.Triangle)
            return a.Triangle > b.Triangle;
        return a.Edge > b.Edge;
    }
};

class StripBuilder {
public:
    StripBuilder(const std::vector<VMPolygon*>& batch, std::vector<int> neighbours, int minStripLength,
                 StripBatchOutput& output)
        : m_neighbours(std::move(neighbours))
        , m_minStripLength(minStripLength)
        , m_output(output)
    {
        const size_t count = batch.size();
        m_corners.reserve(count * 3);
        for (const VMPolygon* triangle : batch)
            m_corners.insert(m_corners.end(), triangle->Corners.begin(), triangle->Corners.begin() + 3);
        m_used.assign(count, 0);
        m_walkMark.assign(count, 0);
        FindSharedEdges();
        CountFreeNeighbours();
    }

    void RunFewestNeighboursFirst()
    {
        // A triangle's entry is stale once it is used or its free count has dropped; it was
        // then pushed again under its new count.
        std::vector<std::priority_queue<int, std::vector<int>, std::greater<int>>> byFreeCount(4);
        for (int triangle = 0; triangle < TriangleCount(); ++triangle)
            byFreeCount[m_freeCount[static_cast<size_t>(triangle)]].push(triangle);
        m_onFreeCountDropped = [&byFreeCount](int triangle, int freeCount) { byFreeCount[static_cast<size_t>(freeCount)].push(triangle); };

        for (;;) {
            int start = None;
            for (int freeCount = 0; freeCount < 4 && start == None; ++freeCount) {
                auto& queue = byFreeCount[static_cast<size_t>(freeCount)];
                while (!queue.empty()) {
                    const int triangle = queue.top();
                    if (!IsUsed(triangle) && m_freeCount[static_cast<size_t>(triangle)] == freeCount) {
                        start = triangle;
                        break;
                    }
                    queue.pop();
                }
            }
            if (start == None)
                break;
            int bestScore = 0;
            int bestEdge = 0;
            for (int edge = 0; edge < 3; ++edge) {
                const int score = Score(start, edge);
                if (score > bestScore) {
                    bestScore = score;
                    bestEdge = edge;
                }
            }
            BuildFrom(start, bestEdge, bestScore);
        }
        m_onFreeCountDropped = nullptr;
    }

    // Scores only fall as triangles get used, so a candidate whose stored score is still its
    // score when it reaches the top is the best of all: the others' stored scores bound theirs.
    void RunLookAhead()
    {
        std::vector<Candidate> initial;
        initial.reserve(static_cast<size_t>(TriangleCount()) * 3);
        for (int triangle = 0; triangle < TriangleCount(); ++triangle)
            for (int edge = 0; edge < 3; ++edge)
                initial.push_back({Score(triangle, edge), triangle, edge});
        std::priority_queue<Candidate, std::vector<Candidate>, LowerPriority> candidates(LowerPriority{},
                                                                                         std::move(initial));
        while (!candidates.empty()) {
            Candidate top = candidates.top();
            candidates.pop();
            if (IsUsed(top.Triangle))
                continue;
            const int score = Score(top.Triangle, top.Edge);
            if (score != top.Score) {
                top.Score = score;
                candidates.push(top);
                continue;
            }
            BuildFrom(top.Triangle, top.Edge, score);
        }
    }

private:
    int TriangleCount() const { return static_cast<int>(m_used.size()); }
    bool IsUsed(int triangle) const { return m_used[static_cast<size_t>(triangle)] != 0; }
    VMVertex* Corner(int triangle, int corner) const { return m_corners[static_cast<size_t>(triangle * 3 + corner)]; }
    int Neighbour(int triangle, int edge) const { return m_neighbours[static_cast<size_t>(triangle * 3 + edge)]; }
    int SharedEdge(int triangle, int edge) const { return m_sharedEdge[static_cast<size_t>(triangle * 3 + edge)]; }

    // The neighbour across the edge when it runs that edge the other way, else None.
    int WalkableNeighbour(int triangle, int edge) const
    {
        return SharedEdge(triangle, edge) == None ? None : Neighbour(triangle, edge);
    }
    bool IsFreeWalkable(int triangle, int edge) const
    {
        const int neighbour = WalkableNeighbour(triangle, edge);
        return neighbour != None && !IsUsed(neighbour);
    }

    void FindSharedEdges()
    {
        m_sharedEdge.assign(m_neighbours.size(), None);
        for (int triangle = 0; triangle < TriangleCount(); ++triangle) {
            for (int edge = 0; edge < 3; ++edge) {
                const int neighbour = Neighbour(triangle, edge);
                if (neighbour == None)
                    continue;
                const VMVertex* from = Corner(triangle, edge);
                const VMVertex* to = Corner(triangle, NextEdge(edge));
                for (int other = 0; other < 3; ++other) {
                    if (Corner(neighbour, other) == to && Corner(neighbour, NextEdge(other)) == from) {
                        m_sharedEdge[static_cast<size_t>(triangle * 3 + edge)] = other;
                        break;
                    }
                }
            }
        }
    }

    void CountFreeNeighbours()
    {
        m_freeCount.assign(m_used.size(), 0);
        m_pointedByStart.assign(m_used.size() + 1, 0);
        for (size_t slot = 0; slot < m_neighbours.size(); ++slot) {
            if (m_neighbours[slot] == None)
                continue;
            ++m_freeCount[slot / 3];
            ++m_pointedByStart[static_cast<size_t>(m_neighbours[slot]) + 1];
        }
        for (size_t triangle = 0; triangle < m_used.size(); ++triangle)
            m_pointedByStart[triangle + 1] += m_pointedByStart[triangle];
        m_pointedBy.assign(static_cast<size_t>(m_pointedByStart.back()), 0);
        std::vector<int> filled(m_pointedByStart.begin(), m_pointedByStart.end() - 1);
        for (size_t slot = 0; slot < m_neighbours.size(); ++slot)
            if (m_neighbours[slot] != None)
                m_pointedBy[static_cast<size_t>(filled[static_cast<size_t>(m_neighbours[slot])]++)] = static_cast<int>(slot / 3);
    }

    int Score(int start, int edge)
    {
        const int first = WalkableNeighbour(start, edge);
        if (first == None || IsUsed(first))
            return 1;
        if (++m_walk == 0) {
            std::fill(m_walkMark.begin(), m_walkMark.end(), 0);
            m_walk = 1;
        }
        Mark(start);
        Mark(first);
        int shared = SharedEdge(start, edge);
        int leaving = NextEdge(shared);
        int current = WalkableNeighbour(first, leaving);
        if (current == None || IsUsed(current) || IsMarked(current))
            return 2;
        shared = SharedEdge(first, leaving);
        int depth = 3;
        bool turnAfter = false;
        for (;;) {
            Mark(current);
            leaving = turnAfter ? NextEdge(shared) : PreviousEdge(shared);
            const int next = WalkableNeighbour(current, leaving);
            if (next == None || IsUsed(next) || IsMarked(next))
                return depth;
            ++depth;
            shared = SharedEdge(current, leaving);
            current = next;
            turnAfter = !turnAfter;
        }
    }

    void Mark(int triangle) { m_walkMark[static_cast<size_t>(triangle)] = m_walk; }
    bool IsMarked(int triangle) const { return m_walkMark[static_cast<size_t>(triangle)] == m_walk; }

    void Use(int triangle)
    {
        m_used[static_cast<size_t>(triangle)] = 1;
        const int end = m_pointedByStart[static_cast<size_t>(triangle) + 1];
        for (int entry = m_pointedByStart[static_cast<size_t>(triangle)]; entry < end; ++entry) {
            const int neighbour = m_pointedBy[static_cast<size_t>(entry)];
            uint8_t& freeCount = m_freeCount[static_cast<size_t>(neighbour)];
            --freeCount;
            if (m_onFreeCountDropped && !IsUsed(neighbour))
                m_onFreeCountDropped(neighbour, freeCount);
        }
    }

    void Append(int triangle, int firstCorner)
    {
        for (int corner = 0; corner < 3; ++corner)
            m_output.Corners.push_back(Corner(triangle, (firstCorner + corner) % 3));
        m_output.Triangles.push_back(triangle);
        Use(triangle);
    }

    void BuildFrom(int start, int edge, int bestScore)
    {
        const int segmentStart = static_cast<int>(m_output.Triangles.size());
        if (m_freeCount[static_cast<size_t>(start)] == 0 || bestScore < m_minStripLength - 1) {
            Append(start, 0);
            m_output.Segments.push_back({segmentStart, 1, -1});
            return;
        }
        // Rotated so that the chosen edge runs from the second corner to the third.
        Append(start, PreviousEdge(edge));
        int length = 1;
        if (IsFreeWalkable(start, edge)) {
            int current = WalkableNeighbour(start, edge);
            int shared = SharedEdge(start, edge);
            bool turnBefore = true;
            for (;;) {
                Append(current, shared);
                ++length;
                const int leaving = turnBefore ? PreviousEdge(shared) : NextEdge(shared);
                if (!IsFreeWalkable(current, leaving))
                    break;
                const int next = WalkableNeighbour(current, leaving);
                shared = SharedEdge(current, leaving);
                current = next;
                turnBefore = !turnBefore;
            }
        }
        m_output.Segments.push_back({segmentStart, length, 2 * edge + 1});
    }

    std::vector<VMVertex*> m_corners;
    std::vector<int> m_neighbours;
    // Per neighbour slot: the neighbour's edge that runs the shared edge the other way, or None.
    std::vector<int> m_sharedEdge;
    std::vector<uint8_t> m_used;
    std::vector<uint8_t> m_freeCount;
    // For each triangle, the triangles whose neighbour slots point at it (one entry per slot).
    std::vector<int> m_pointedByStart;
    std::vector<int> m_pointedBy;
    std::vector<uint32_t> m_walkMark;
    uint32_t m_walk = 0;
    std::function<void(int, int)> m_onFreeCountDropped;
    int m_minStripLength;
    StripBatchOutput& m_output;
};

} // namespace

int BuildStrips(const std::vector<VMPolygon*>& batch, int method, int minStripLength, int vertexListCount,
                StripBatchOutput& output)
{
    try {
        std::vector<int> neighbours;
        const int result = BuildBatchConnectivity(batch, vertexListCount, neighbours);
        if (result != 0)
            return result;
        output.Corners.reserve(batch.size() * 3);
        output.Triangles.reserve(batch.size());
        StripBuilder builder(batch, std::move(neighbours), minStripLength, output);
        if (method == 2)
            builder.RunFewestNeighboursFirst();
        else
            builder.RunLookAhead();
        return 0;
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
