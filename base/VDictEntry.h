#pragma once
// A named entry of a keyed list.

#include <string>

template <class T>
struct VDictEntry {
    std::string Name;
    T Value {};
};
