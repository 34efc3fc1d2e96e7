#pragma once
// The factories' allocation: exhaustion is answered with null instead of an exception, so that
// the calling pass can report it with its own code.

#include <memory>
#include <new>
#include <utility>

template <class T, class... Args>
std::unique_ptr<T> MakeRecord(Args&&... args)
{
    try {
        return std::make_unique<T>(std::forward<Args>(args)...);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
