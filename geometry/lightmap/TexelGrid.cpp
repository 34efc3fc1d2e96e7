#include "geometry/lightmap/TexelGrid.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace {

constexpr int WordBits = 64;

// The bits first..last of a word, 0 <= first <= last < 64.
uint64_t Bits(int first, int last)
{
    const uint64_t upTo = last == WordBits - 1 ? ~uint64_t{0} : (uint64_t{1} << (last + 1)) - 1;
    return upTo & ~((uint64_t{1} << first) - 1);
}

} // namespace

TexelGrid::TexelGrid(int width, int height)
    : m_width(width)
    , m_height(height)
    , m_words((static_cast<size_t>(width) + WordBits - 1) / WordBits)
    , m_bits(m_words * static_cast<size_t>(height), 0)
    , m_longestFree(static_cast<size_t>(height), width)
{
}

int TexelGrid::LastTaken(int y, int first, int last) const
{
    const uint64_t* row = &m_bits[static_cast<size_t>(y) * m_words];
    for (int word = last / WordBits; word >= first / WordBits; --word) {
        const int from = word == first / WordBits ? first % WordBits : 0;
        const int to = word == last / WordBits ? last % WordBits : WordBits - 1;
        const uint64_t taken = row[word] & Bits(from, to);
        if (taken != 0)
            return word * WordBits + WordBits - 1 - std::countl_zero(taken);
    }
    return -1;
}

int TexelGrid::Next(int y, int x, bool taken) const
{
    const uint64_t* row = &m_bits[static_cast<size_t>(y) * m_words];
    for (int word = x / WordBits; word < static_cast<int>(m_words); ++word) {
        const uint64_t wanted = (taken ? row[word] : ~row[word]) & Bits(word == x / WordBits ? x % WordBits : 0, WordBits - 1);
        if (wanted != 0)
            return std::min(m_width, word * WordBits + std::countr_zero(wanted));
    }
    return m_width;
}

bool TexelGrid::Find(const RowSpans& shape, int yLimit, int& x, int& y) const
{
    if (shape.Width > m_width || shape.Height > m_height)
        return false;
    // The widest row rules out most rows at a glance; it is also the row most likely to collide.
    std::vector<int> rows;
    int widest = -1;
    int widestSpan = 0;
    for (int j = 0; j < shape.Height; ++j) {
        const int span = shape.High[static_cast<size_t>(j)] - shape.Low[static_cast<size_t>(j)] + 1;
        if (span <= 0)
            continue;
        rows.push_back(j);
        if (span > widestSpan) {
            widestSpan = span;
            widest = j;
        }
    }
    if (widest < 0)
        return false;
    std::iter_swap(rows.begin(), std::find(rows.begin(), rows.end(), widest));
    const int lastY = std::min(yLimit - 1, m_height - shape.Height);
    for (int atY = 0; atY <= lastY; ++atY) {
        const bool roomInEveryRow = std::all_of(rows.begin(), rows.end(), [&](int j) {
            return m_longestFree[static_cast<size_t>(atY + j)] >
                   shape.High[static_cast<size_t>(j)] - shape.Low[static_cast<size_t>(j)];
        });
        if (!roomInEveryRow)
            continue;
        for (int atX = 0; atX <= m_width - shape.Width;) {
            bool fits = true;
            for (int j : rows) {
                const int low = shape.Low[static_cast<size_t>(j)];
                const int taken = LastTaken(atY + j, atX + low, atX + shape.High[static_cast<size_t>(j)]);
                if (taken >= 0) {
                    // No place whose row j still covers that texel can fit.
                    atX = (taken + 1 < m_width ? Next(atY + j, taken + 1, false) : m_width) - low;
                    fits = false;
                    break;
                }
            }
            if (fits) {
                x = atX;
                y = atY;
                return true;
            }
        }
    }
    return false;
}

void TexelGrid::TakeRow(int y, int first, int last)
{
    uint64_t* row = &m_bits[static_cast<size_t>(y) * m_words];
    for (int word = first / WordBits; word <= last / WordBits; ++word)
        row[word] |= Bits(word == first / WordBits ? first % WordBits : 0, word == last / WordBits ? last % WordBits : WordBits - 1);
    int longest = 0;
    for (int at = Next(y, 0, false); at < m_width;) {
        const int end = Next(y, at, true);
        longest = std::max(longest, end - at);
        at = end < m_width ? Next(y, end, false) : m_width;
    }
    m_longestFree[static_cast<size_t>(y)] = longest;
}

void TexelGrid::Take(const RowSpans& shape, int x, int y, int gutter)
{
    for (int j = -gutter; j < shape.Height + gutter; ++j) {
        int low = m_width;
        int high = -1;
        for (int k = std::max(0, j - gutter); k <= std::min(shape.Height - 1, j + gutter); ++k) {
            if (shape.Low[static_cast<size_t>(k)] <= shape.High[static_cast<size_t>(k)]) {
                low = std::min(low, shape.Low[static_cast<size_t>(k)]);
                high = std::max(high, shape.High[static_cast<size_t>(k)]);
            }
        }
        const int row = y + j;
        if (low > high || row < 0 || row >= m_height)
            continue;
        const int first = std::max(0, x + low - gutter);
        const int last = std::min(m_width - 1, x + high + gutter);
        if (first <= last)
            TakeRow(row, first, last);
    }
}
