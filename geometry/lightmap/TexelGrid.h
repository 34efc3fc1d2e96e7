#pragma once
// The texels of an atlas that placed charts and their gutters have taken, row by row, for a
// packer that drops each chart into the lowest hole it fits, beneath overhangs as well as on
// top.

#include <cstddef>
#include <cstdint>
#include <vector>

// A shape on the texel grid by rows: per row the first and last texel it takes, Low > High
// where a row takes none. The texels between the first and last of a row count as taken.
struct RowSpans {
    int Width = 0;
    int Height = 0;
    std::vector<int> Low;
    std::vector<int> High;
};

class TexelGrid {
public:
    TexelGrid(int width, int height);

    // The lowest place (x, y) with y < yLimit, leftmost among the lowest, where every texel of
    // the shape is free and within the grid; false when there is none.
    bool Find(const RowSpans& shape, int yLimit, int& x, int& y) const;
    // Takes the shape's texels at (x, y) and every texel within gutter texels of them across,
    // along or diagonally.
    void Take(const RowSpans& shape, int x, int y, int gutter);

private:
    // The last taken texel of row y in [first, last], -1 when all are free.
    int LastTaken(int y, int first, int last) const;
    // The first texel of row y at or after x that is taken (or free), the width when there is
    // none.
    int Next(int y, int x, bool taken) const;
    void TakeRow(int y, int first, int last);

    int m_width;
    int m_height;
    size_t m_words;
    std::vector<uint64_t> m_bits;
    // Per row: the longest run of free texels.
    std::vector<int> m_longestFree;
};
