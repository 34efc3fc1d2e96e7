#pragma once
// The engine's growable list of pointers. A list does not own what it holds: the container
// whose list it is frees the records (see DeleteAll), because the same record may also be
// referenced from other lists (a polygon from its world and from its vis areas).
//
// Long lists are thinned by emptying slots (RemoveLeaveEmpty) and compacting once at the end,
// which keeps the whole removal pass linear and the order of the survivors unchanged.

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <vector>

template <class T>
class VPListT {
public:
    int Count() const { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }

    T* Get(int index) const
    {
        assert(index >= 0 && index < Count());
        return m_items[static_cast<size_t>(index)];
    }
    T* operator[](int index) const { return Get(index); }
    void Set(int index, T* item)
    {
        assert(index >= 0 && index < Count());
        m_items[static_cast<size_t>(index)] = item;
    }

    void Add(T* item) { m_items.push_back(item); }
    void Insert(int index, T* item)
    {
        assert(index >= 0 && index <= Count());
        m_items.insert(m_items.begin() + index, item);
    }

    // Closes the gap; the order of the rest is kept.
    void Remove(int index)
    {
        assert(index >= 0 && index < Count());
        m_items.erase(m_items.begin() + index);
    }
    void RemoveLeaveEmpty(int index) { Set(index, nullptr); }

    // Removes the first occurrence; answers whether the item was there.
    bool RemoveItem(const T* item)
    {
        const int index = Find(item);
        if (index < 0)
            return false;
        Remove(index);
        return true;
    }

    int Find(const T* item) const
    {
        const auto it = std::find(m_items.begin(), m_items.end(), item);
        return it == m_items.end() ? -1 : static_cast<int>(it - m_items.begin());
    }

    // Drops the empty slots, keeping the order of the rest.
    void Compact() { std::erase(m_items, nullptr); }

    void Clear() { m_items.clear(); }
    void Reserve(int count) { m_items.reserve(static_cast<size_t>(std::max(count, 0))); }

    // Frees every record held (empty slots are skipped) and empties the list; for the owning container.
    void DeleteAll()
    {
        for (T* item : m_items)
            delete item;
        m_items.clear();
    }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    std::vector<T*> m_items;
};

using VPList = VPListT<void>;
