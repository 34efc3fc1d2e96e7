#include "geometry/StripCubeGrid.h"

#include <algorithm>
#include <cmath>

namespace {

// Beyond this the cells would be finer than the coordinates' own steps; clamping keeps the cell
// index monotonic, so the window still finds every box.
constexpr double FarthestCell = 0x1p50;
// A window over more cells than this (coordinates so far out that the window's rounding slack
// spans many cells) looks at every cell instead.
constexpr int64_t MostVisitedCells = 64;

} // namespace

size_t StripCubeGrid::CellHash::operator()(const Cell& cell) const
{
    uint64_t hash = 0;
    for (const int64_t index : cell.Index)
        hash = (hash ^ static_cast<uint64_t>(index)) * 0x9E3779B97F4A7C15ull;
    return static_cast<size_t>(hash ^ (hash >> 29));
}

StripCubeGrid::StripCubeGrid(const std::vector<StripCandidateBox>& boxes, float cube)
    : m_cube(cube)
{
    // Counted first, then filled, so that each cell keeps its boxes in list order.
    std::vector<Cell> cellOf;
    cellOf.reserve(boxes.size());
    for (const StripCandidateBox& box : boxes) {
        cellOf.push_back({{CellIndex(box.Min[0]), CellIndex(box.Min[1]), CellIndex(box.Min[2])}});
        ++m_cells[cellOf.back()].End;
    }
    uint32_t offset = 0;
    for (auto& [cell, range] : m_cells) {
        range.First = offset;
        offset += range.End;
        range.End = range.First;
    }
    m_boxes.resize(boxes.size());
    for (size_t box = 0; box < boxes.size(); ++box)
        m_boxes[m_cells[cellOf[box]].End++] = boxes[box];
}

int64_t StripCubeGrid::CellIndex(double coordinate) const
{
    return static_cast<int64_t>(std::clamp(std::floor(coordinate / m_cube), -FarthestCell, FarthestCell));
}

void StripCubeGrid::Reachable(const float* min, const float* max, const std::vector<uint8_t>& taken,
                              std::vector<StripCandidateBox>& found)
{
    // The fit test rounds its float difference: one that passes is at most the next float above
    // the cube. The slack covers the rounding of the window's own bounds.
    const double reach = std::nextafter(m_cube, HUGE_VALF);
    double low[3];
    double high[3];
    int64_t first[3];
    int64_t last[3];
    int64_t cellCount = 1;
    for (int axis = 0; axis < 3; ++axis) {
        const double slack = (std::fabs(min[axis]) + std::fabs(max[axis]) + reach) * 0x1p-50;
        low[axis] = max[axis] - reach - slack;
        high[axis] = min[axis] + reach + slack;
        first[axis] = CellIndex(low[axis]);
        last[axis] = CellIndex(high[axis]);
        if (last[axis] < first[axis])
            return;
        cellCount *= std::min(last[axis] - first[axis] + 1, MostVisitedCells + 1);
        cellCount = std::min(cellCount, MostVisitedCells + 1);
    }

    const size_t before = found.size();
    int visited = 0;
    if (cellCount > MostVisitedCells) {
        for (auto& [cell, range] : m_cells)
            visited += TakeFrom(range, taken, low, high, found) ? 1 : 0;
    } else {
        Cell cell;
        for (cell.Index[0] = first[0]; cell.Index[0] <= last[0]; ++cell.Index[0])
            for (cell.Index[1] = first[1]; cell.Index[1] <= last[1]; ++cell.Index[1])
                for (cell.Index[2] = first[2]; cell.Index[2] <= last[2]; ++cell.Index[2])
                    if (const auto range = m_cells.find(cell); range != m_cells.end())
                        visited += TakeFrom(range->second, taken, low, high, found) ? 1 : 0;
    }
    if (visited > 1)
        std::sort(found.begin() + static_cast<std::ptrdiff_t>(before), found.end(),
                  [](const StripCandidateBox& a, const StripCandidateBox& b) { return a.Candidate < b.Candidate; });
}

bool StripCubeGrid::TakeFrom(Range& range, const std::vector<uint8_t>& taken, const double* low, const double* high,
                             std::vector<StripCandidateBox>& found)
{
    const size_t before = found.size();
    uint32_t kept = range.First;
    for (uint32_t entry = range.First; entry < range.End; ++entry) {
        const StripCandidateBox& box = m_boxes[entry];
        if (taken[static_cast<size_t>(box.Candidate)] != 0)
            continue;
        m_boxes[kept++] = box;
        bool inside = true;
        for (int axis = 0; axis < 3; ++axis)
            inside = inside && box.Min[axis] >= low[axis] && box.Max[axis] <= high[axis];
        if (inside)
            found.push_back(box);
    }
    range.End = kept;
    return found.size() > before;
}
