// The nearest-polygon rules measure a point against every polygon of some areas; a box tree
// over the polygons (the distance is never below the distance to a polygon's box) finds the
// same nearest polygon, ties going to the earlier one in the list, without looking at most of
// them. Its masks record which areas each subtree holds (channel 0: every polygon with an
// area; channel 1: the waiting polygons decided so far), so a search for some areas skips the
// subtrees of others.

#include "base/TextUtil.h"
#include "geometry/visibility/VBBoxTree.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace {

constexpr double FloatingBoxMargin = 0.01;
constexpr double AreaBoxMargin = 0.1;
// Where the deferred pass starts every distance, and what an area without polygons stays at.
constexpr double FarDistance = 1e8;
// Taken off the metric of a polygon that no area box held, so such polygons are decided last.
constexpr double OutsideEveryBoxPenalty = 1024.0;
constexpr int AllAssigned = 0;
constexpr int DecidedWaiting = 1;

uint64_t AreaBit(int32_t area) { return 1ull << (static_cast<uint32_t>(area) % 64u); }

bool IsDeferredMode(int mode) { return mode == VBModeDeferredNearest || mode == VBModeIntersections; }

struct Nearest {
    double Distance = INFINITY;
    int32_t ListIndex = -1;
    int32_t Area = -1;
};

struct Waiting {
    int32_t Polygon = -1;
    VBVector Centre;
    int32_t Areas[2] = {-1, -1};
    double Distances[2] = {FarDistance, FarDistance};
    double Metric = 0.0;
};

class FloatingAssigner {
public:
    explicit FloatingAssigner(VBContext& context) : m_context(context), m_state(context.State)
    {
        for (size_t a = 0; a < m_state.Areas.size(); ++a)
            if (m_state.Areas[a].MergedInto < 0)
                m_liveAreas.push_back(static_cast<int32_t>(a));
        m_boxes.reserve(m_state.List.size());
        for (const int32_t number : m_state.List) {
            const VBPolygon& polygon = m_state.Polygons[static_cast<size_t>(number)];
            VBBox box = BoxOfCorners(m_state.CornersOf(polygon), polygon.CornerCount);
            box.Enlarge(FloatingBoxMargin);
            m_boxes.push_back(box);
        }
        m_tree.Build(m_boxes);
        for (size_t position = 0; position < m_state.List.size(); ++position) {
            const int32_t area = m_state.Polygons[static_cast<size_t>(m_state.List[position])].Area;
            if (area >= 0)
                m_tree.Mark(static_cast<int32_t>(position), AllAssigned, AreaBit(area));
        }
    }

    void Run()
    {
        const int mode = m_state.Mode;
        for (const int32_t number : m_state.Floating) {
            if (m_state.Polygons[static_cast<size_t>(number)].Area >= 0)
                continue;
            const std::vector<int32_t> candidates = CandidateAreas(number);
            if (candidates.size() == 1) {
                ++m_simple;
                if (mode == VBModeQuick)
                    Assign(number, candidates.front());
                else
                    Spread(number, candidates.front());
            } else if (!candidates.empty()) {
                ++m_hard;
                if (IsDeferredMode(mode))
                    Wait(number, candidates, true);
                else if (mode == VBModeQuick)
                    CopyIntoEach(number, candidates);
                else
                    Place(number, candidates);
            } else {
                ++m_impossible;
                if (IsDeferredMode(mode))
                    Wait(number, m_liveAreas, false);
                else
                    Place(number, m_liveAreas);
            }
        }
        if (!m_waiting.empty())
            DecideWaiting();
        VBLog(m_context, "  VBVisBuilder: Floating geometry assigned: %i simple, %i hard, %i impossible cases.\r\n",
              m_simple, m_hard, m_impossible);
    }

private:
    const VBPolygon& PolygonAt(int32_t number) const { return m_state.Polygons[static_cast<size_t>(number)]; }

    std::vector<int32_t> CandidateAreas(int32_t number) const
    {
        std::vector<int32_t> candidates;
        const VBPolygon& polygon = PolygonAt(number);
        const VBVector* corners = m_state.CornersOf(polygon);
        for (const int32_t area : m_liveAreas) {
            const VBBox& box = m_state.Areas[static_cast<size_t>(area)].Box;
            for (uint32_t k = 0; k < polygon.CornerCount; ++k)
                if (box.Contains(corners[k])) {
                    candidates.push_back(area);
                    break;
                }
        }
        return candidates;
    }

    void Mark(int32_t number)
    {
        const VBPolygon& polygon = PolygonAt(number);
        // Copies stand in the tree at the place of the polygon they were copied from.
        int32_t original = number;
        while (PolygonAt(original).ListIndex >= m_tree.Count())
            original = PolygonAt(original).Source;
        const int32_t position = PolygonAt(original).ListIndex;
        m_tree.Mark(position, AllAssigned, AreaBit(polygon.Area));
        if (m_waitingPolygons.contains(number))
            m_tree.Mark(position, DecidedWaiting, AreaBit(polygon.Area));
    }

    void Assign(int32_t number, int32_t area)
    {
        VBPolygon& polygon = m_state.Polygons[static_cast<size_t>(number)];
        polygon.Area = area;
        polygon.Sequence = m_state.SequenceCounter++;
        ++m_state.Areas[static_cast<size_t>(area)].Elements;
        Mark(number);
    }

    // The polygon takes the area, and so do the floating polygons connected to it.
    void Spread(int32_t number, int32_t area)
    {
        m_assigned.clear();
        FillFromPolygons(m_state, {number}, area, &m_assigned);
        for (const int32_t assigned : m_assigned)
            Mark(assigned);
    }

    void CopyIntoEach(int32_t number, const std::vector<int32_t>& candidates)
    {
        Assign(number, candidates.front());
        for (size_t c = 1; c < candidates.size(); ++c) {
            VBPolygon copy = PolygonAt(number);
            copy.Source = number;
            copy.Copy = true;
            copy.Area = -1;
            copy.ListIndex = static_cast<int32_t>(m_state.List.size());
            m_state.Polygons.push_back(copy);
            const auto copyNumber = static_cast<int32_t>(m_state.Polygons.size() - 1);
            m_state.List.push_back(copyNumber);
            m_copies[number].push_back(copyNumber);
            Assign(copyNumber, candidates[c]);
        }
    }

    // Outside the quick mode the area of the first connected polygon that has one; else the
    // area of the nearest polygon among those of the candidate areas.
    void Place(int32_t number, const std::vector<int32_t>& candidates)
    {
        if (m_state.Mode != VBModeQuick) {
            const auto p = static_cast<size_t>(number);
            if (p + 1 < m_state.ConnectionStart.size())
                for (uint32_t k = m_state.ConnectionStart[p]; k < m_state.ConnectionStart[p + 1]; ++k) {
                    const int32_t area = PolygonAt(m_state.ConnectionTargets[k]).Area;
                    if (area >= 0) {
                        Assign(number, area);
                        return;
                    }
                }
        }
        const VBPolygon& polygon = PolygonAt(number);
        const VBVector centre = CentreOfCorners(m_state.CornersOf(polygon), polygon.CornerCount);
        const Nearest nearest = NearestPolygon(centre, candidates, AllAssigned, -1);
        if (nearest.Area >= 0)
            Assign(number, nearest.Area);
    }

    // The nearest polygon (the earlier in the list on a tie) whose area is one of areas; in the
    // decided-waiting channel only waiting polygons other than except count.
    Nearest NearestPolygon(const VBVector& point, const std::vector<int32_t>& areas, int channel, int32_t except) const
    {
        uint64_t wanted = 0;
        for (const int32_t area : areas)
            wanted |= AreaBit(area);
        Nearest best;
        const auto offer = [&](int32_t number, double distance) {
            const VBPolygon& polygon = PolygonAt(number);
            if (number == except || polygon.Area < 0 || std::find(areas.begin(), areas.end(), polygon.Area) == areas.end())
                return;
            if (channel == DecidedWaiting && !m_waitingPolygons.contains(number))
                return;
            if (distance < best.Distance || (distance == best.Distance && polygon.ListIndex < best.ListIndex))
                best = Nearest {distance, polygon.ListIndex, polygon.Area};
        };
        m_tree.SearchNearest(
            point, channel, wanted,
            [&](int32_t position) {
                const int32_t number = m_state.List[static_cast<size_t>(position)];
                const VBPolygon& polygon = PolygonAt(number);
                const double distance = DistanceToPolygon(m_state.CornersOf(polygon), polygon.CornerCount, polygon.Plane,
                                                          m_boxes[static_cast<size_t>(position)], point);
                offer(number, distance);
                const auto copies = m_copies.find(number);
                if (copies != m_copies.end())
                    for (const int32_t copy : copies->second)
                        offer(copy, distance);
            },
            [&] { return best.Distance; });
        return best;
    }

    void Wait(int32_t number, const std::vector<int32_t>& candidates, bool inSomeBox)
    {
        Waiting entry;
        entry.Polygon = number;
        const VBPolygon& polygon = PolygonAt(number);
        entry.Centre = CentreOfCorners(m_state.CornersOf(polygon), polygon.CornerCount);
        entry.Metric = inSomeBox ? 0.0 : -OutsideEveryBoxPenalty;
        m_waiting.push_back(entry);
        m_waitingCandidates.push_back(candidates);
        m_waitingPolygons.emplace(number, static_cast<int32_t>(m_waiting.size() - 1));
    }

    void DecideWaiting()
    {
        int cached = 0;
        for (const int32_t number : m_state.List)
            cached += PolygonAt(number).Area >= 0 ? 1 : 0;
        VBLog(m_context, "  VBVisBuilder: Cached %i of %i polygons in %i lists\r\n", cached,
              static_cast<int>(m_state.List.size()), static_cast<int>(m_liveAreas.size()));
        const auto count = static_cast<int>(m_waiting.size());
        for (int w = 0; w < count; ++w) {
            if (w % 256 == 0)
                VBLog(m_context, "  VBVisBuilder: Horror metrics: %i of %i \r\n", w, count);
            Waiting& entry = m_waiting[static_cast<size_t>(w)];
            for (const int32_t area : m_waitingCandidates[static_cast<size_t>(w)]) {
                const Nearest nearest = NearestPolygon(entry.Centre, {area}, AllAssigned, -1);
                const double distance = std::min(FarDistance, nearest.Distance);
                if (entry.Areas[0] < 0 || distance < entry.Distances[0]) {
                    entry.Areas[1] = entry.Areas[0];
                    entry.Distances[1] = entry.Distances[0];
                    entry.Areas[0] = area;
                    entry.Distances[0] = distance;
                } else if (entry.Areas[1] < 0 || distance < entry.Distances[1]) {
                    entry.Areas[1] = area;
                    entry.Distances[1] = distance;
                }
            }
            entry.Metric += std::fabs(entry.Distances[0] - entry.Distances[1]);
        }
        VBLog(m_context, "  VBVisBuilder: Sorting... \r\n");
        std::vector<int32_t> order(m_waiting.size());
        for (size_t w = 0; w < order.size(); ++w)
            order[w] = static_cast<int32_t>(w);
        std::stable_sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
            return m_waiting[static_cast<size_t>(a)].Metric > m_waiting[static_cast<size_t>(b)].Metric;
        });
        VBLog(m_context, "  VBVisBuilder: Final assignments... \r\n");
        for (int k = 0; k < count; ++k) {
            if (k % 256 == 0)
                VBLog(m_context, "  VBVisBuilder: Horror assignments: %i of %i \r\n", k, count);
            Waiting& entry = m_waiting[static_cast<size_t>(order[static_cast<size_t>(k)])];
            if (PolygonAt(entry.Polygon).Area >= 0 || entry.Areas[0] < 0)
                continue;
            for (int side = 0; side < 2; ++side) {
                if (entry.Areas[side] < 0)
                    continue;
                const Nearest nearest = NearestPolygon(entry.Centre, {entry.Areas[side]}, DecidedWaiting, entry.Polygon);
                entry.Distances[side] = std::min(entry.Distances[side], nearest.Distance);
            }
            const bool second = entry.Areas[1] >= 0 && entry.Distances[1] < entry.Distances[0];
            Spread(entry.Polygon, entry.Areas[second ? 1 : 0]);
        }
    }

    VBContext& m_context;
    VBState& m_state;
    std::vector<int32_t> m_liveAreas;
    std::vector<VBBox> m_boxes;
    VBBoxTree m_tree;
    // Copies made into further areas, by the polygon they were copied from.
    std::unordered_map<int32_t, std::vector<int32_t>> m_copies;
    std::vector<Waiting> m_waiting;
    std::vector<std::vector<int32_t>> m_waitingCandidates;
    std::unordered_map<int32_t, int32_t> m_waitingPolygons;
    std::vector<int32_t> m_assigned;
    int m_simple = 0;
    int m_hard = 0;
    int m_impossible = 0;
};

} // namespace

void ComputeAreaBoxes(VBContext& context)
{
    VBState& state = context.State;
    for (VBArea& area : state.Areas)
        if (area.MergedInto < 0)
            area.Box.Reset();
    for (const int32_t number : state.List) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        if (polygon.Area >= 0)
            state.Areas[static_cast<size_t>(state.LiveArea(polygon.Area))].Box.Grow(
                BoxOfCorners(state.CornersOf(polygon), polygon.CornerCount));
    }
    // An item that names its area belongs to it wherever it stands.
    for (const auto& item : context.Items) {
        if (item->AreaName.empty())
            continue;
        for (VBArea& area : state.Areas)
            if (area.MergedInto < 0 && EqualsNoCase(area.Name, item->AreaName)) {
                area.Box.Grow(item->Box);
                break;
            }
    }
    for (VBArea& area : state.Areas)
        if (area.MergedInto < 0 && !area.Box.IsEmpty())
            area.Box.Enlarge(AreaBoxMargin);
}

void AssignFloatingGeometry(VBContext& context)
{
    FloatingAssigner(context).Run();
}
