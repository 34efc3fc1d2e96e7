#pragma once
// The animation descriptions of one export, in the order the user listed them.

#include "base/TextUtil.h"
#include "settings/VAnimationDescription.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

class VAnimationTable {
public:
    static constexpr int kCapacity = 1024;

    int Count() const { return static_cast<int>(m_entries.size()); }

    VAnimationDescription& operator[](int index)
    {
        assert(index >= 0 && index < Count());
        return m_entries[static_cast<size_t>(index)];
    }
    const VAnimationDescription& operator[](int index) const
    {
        assert(index >= 0 && index < Count());
        return m_entries[static_cast<size_t>(index)];
    }

    // Answers false, adding nothing, when the table is full.
    bool Add(VAnimationDescription entry)
    {
        if (Count() >= kCapacity)
            return false;
        m_entries.push_back(std::move(entry));
        return true;
    }

    // Replaces the first entry of the same name (compared ignoring case, as the animation list
    // does), else adds the entry; false, changing nothing, when a new entry finds the table full.
    bool AddOrReplace(VAnimationDescription entry)
    {
        for (VAnimationDescription& present : m_entries) {
            if (EqualsNoCase(present.Name, entry.Name)) {
                present = std::move(entry);
                return true;
            }
        }
        return Add(std::move(entry));
    }

    // Later entries move up by one place.
    void Remove(int index)
    {
        assert(index >= 0 && index < Count());
        m_entries.erase(m_entries.begin() + index);
    }

    // Replaces the entries by count new ones, count clamped to 0..kCapacity.
    void Reset(int count)
    {
        m_entries.assign(static_cast<size_t>(std::clamp(count, 0, kCapacity)), VAnimationDescription {});
    }

    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

    bool operator==(const VAnimationTable&) const = default;

private:
    std::vector<VAnimationDescription> m_entries;
};
