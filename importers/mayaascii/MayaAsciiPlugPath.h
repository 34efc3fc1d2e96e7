#pragma once
// The plug names of Maya ASCII commands taken apart: "|grp|pCube1.iog[0].og[2].gcl", ".vt[0:7]",
// ".wl[0:421].w" (a node name, or none for the current node, and attribute names each with an index or a range).

#include <optional>
#include <string>
#include <vector>

struct MaPlugSegment {
    std::string Name;
    std::optional<unsigned int> First; // no index written
    unsigned int Last = 0;             // equals First unless a range [First:Last] is written
};

struct MaPlugPath {
    std::string Node; // empty: the plug starts with '.', on the current node
    std::vector<MaPlugSegment> Segments;

    // The segment that carries a range, or -1; a plug has at most one.
    int RangeSegment() const;
};

// False when the text is not a plug name (no attribute, an unclosed or reversed index, two ranges).
bool ParsePlugPath(const std::string& text, MaPlugPath& path);
