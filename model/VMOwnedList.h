#pragma once
// A list of records owned by the container it belongs to. Records reach the list as raw
// pointers (the containers' factories make them) and are destroyed when they are removed,
// when the list is cleared and when the list itself goes. Other lists that refer to the same
// records (a vis area's polygons, a primitive's owners) are plain VPListT and own nothing.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

template <class T>
class VMOwnedList {
public:
    VMOwnedList() = default;
    VMOwnedList(const VMOwnedList&) = delete;
    VMOwnedList& operator=(const VMOwnedList&) = delete;
    ~VMOwnedList() { Clear(); }

    int Count() const { return static_cast<int>(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }
    bool IsValidIndex(int index) const { return index >= 0 && index < Count(); }

    // Null for an index outside the list and for an empty slot.
    T* Get(int index) const { return IsValidIndex(index) ? m_items[static_cast<size_t>(index)] : nullptr; }
    T* operator[](int index) const { return Get(index); }

    int Find(const T* record) const
    {
        if (record == nullptr)
            return -1;
        const auto it = std::find(m_items.begin(), m_items.end(), record);
        return it == m_items.end() ? -1 : static_cast<int>(it - m_items.begin());
    }
    bool Contains(const T* record) const { return Find(record) >= 0; }

    // Takes ownership. Null is refused with -1; -301 when the list cannot grow, and then the
    // record is destroyed so that it does not leak.
    int Add(T* record)
    {
        if (record == nullptr)
            return -1;
        try {
            m_items.push_back(record);
        } catch (const std::bad_alloc&) {
            delete record;
            return -301;
        }
        return 0;
    }

    int Add(std::unique_ptr<T> record) { return Add(record.release()); }

    // Destroys the record and closes the gap; the order of the rest is kept.
    int Remove(int index)
    {
        if (!IsValidIndex(index))
            return -1;
        delete m_items[static_cast<size_t>(index)];
        m_items.erase(m_items.begin() + index);
        return 0;
    }

    // Destroys the record and leaves its slot empty, so that a long removal pass stays linear;
    // Compact drops the empty slots once at the end.
    int RemoveLeaveEmpty(int index)
    {
        if (!IsValidIndex(index))
            return -1;
        delete m_items[static_cast<size_t>(index)];
        m_items[static_cast<size_t>(index)] = nullptr;
        return 0;
    }

    // Hands the record to the caller and closes the gap; null outside the list.
    std::unique_ptr<T> Take(int index)
    {
        if (!IsValidIndex(index))
            return nullptr;
        std::unique_ptr<T> record(m_items[static_cast<size_t>(index)]);
        m_items.erase(m_items.begin() + index);
        return record;
    }

    // Hands the record to the caller and leaves its slot empty.
    std::unique_ptr<T> TakeLeaveEmpty(int index)
    {
        if (!IsValidIndex(index))
            return nullptr;
        std::unique_ptr<T> record(m_items[static_cast<size_t>(index)]);
        m_items[static_cast<size_t>(index)] = nullptr;
        return record;
    }

    // Hands every record to the caller (empty slots included, in order) and empties the list;
    // for passes that rebuild a list from the survivors.
    std::vector<std::unique_ptr<T>> TakeAll()
    {
        std::vector<std::unique_ptr<T>> records;
        records.reserve(m_items.size());
        for (T* item : m_items)
            records.emplace_back(item);
        m_items.clear();
        return records;
    }

    // Empties the list without destroying anything: for scratch containers that borrow the
    // records of another container for the length of a pass.
    void ReleaseAll() { m_items.clear(); }

    void Compact() { std::erase(m_items, nullptr); }
    bool HasEmptySlots() const { return std::find(m_items.begin(), m_items.end(), nullptr) != m_items.end(); }

    void Clear()
    {
        for (T* item : m_items)
            delete item;
        m_items.clear();
    }

    void Reserve(int count) { m_items.reserve(static_cast<size_t>(std::max(count, 0))); }

    // Lets a sort pass reorder the records in place. The callback may only permute the
    // pointers it is given; it must not add, drop or free any.
    template <class Reorder>
    void Rearrange(Reorder reorder)
    {
        reorder(m_items);
    }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    std::vector<T*> m_items;
};
