#pragma once
// The triangles of one gathering group filed by cells as large as the stripper's cube, so that a
// batch looks only at the few cells its cube can reach instead of at every triangle of a wide
// scene.
//
// A triangle is filed under the cell of its box's low corner. A batch whose box B must stay
// within the cube c on each axis can only take a triangle whose low corner lies in
// [B.max - c, B.min + c] on every axis, about 3 cells per axis; the window is widened by the
// rounding of the float fit test, so the grid answers a superset and the caller keeps its own
// exact test.

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

struct StripCandidateBox {
    int Candidate = 0;
    float Min[3] = {0.0f, 0.0f, 0.0f};
    float Max[3] = {0.0f, 0.0f, 0.0f};
};

class StripCubeGrid {
public:
    // boxes: in list order, all coordinates finite; cube: finite and greater than 0.
    StripCubeGrid(const std::vector<StripCandidateBox>& boxes, float cube);

    float Cube() const { return m_cube; }

    // Appends to found, in list order, the boxes not yet taken that a batch whose box spans
    // [min, max] could still take; drops the taken ones from the cells it visits.
    void Reachable(const float* min, const float* max, const std::vector<uint8_t>& taken,
                   std::vector<StripCandidateBox>& found);

private:
    struct Cell {
        int64_t Index[3];
        bool operator==(const Cell& other) const
        {
            return Index[0] == other.Index[0] && Index[1] == other.Index[1] && Index[2] == other.Index[2];
        }
    };
    struct CellHash {
        size_t operator()(const Cell& cell) const;
    };
    // The cell's boxes are m_boxes[First..End), in list order.
    struct Range {
        uint32_t First = 0;
        uint32_t End = 0;
    };

    int64_t CellIndex(double coordinate) const;
    // Drops the range's taken boxes and appends those inside [low, high]; answers whether any was.
    bool TakeFrom(Range& range, const std::vector<uint8_t>& taken, const double* low, const double* high,
                  std::vector<StripCandidateBox>& found);

    float m_cube;
    std::vector<StripCandidateBox> m_boxes;
    std::unordered_map<Cell, Range, CellHash> m_cells;
};
