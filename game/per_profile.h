// An array indexed by the host's profile index, grown on demand.
#pragma once

#include <memory>
#include <vector>

#include "host/failure.h"

// The highest profile index; 0 occurs in remote calls only.
inline constexpr Long MaxProfileIndex = 32767;

// Error 9 outside 0 to MaxProfileIndex.
inline void CheckProfileIndex(Long Index, Place Where = Place::current()) {
    if (Index < 0 || Index > MaxProfileIndex) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
}

template <class T> class PerProfile {
public:
    // Element Index; error 9 when the array does not reach that far.
    T& operator()(Long Index, Place Where = Place::current()) {
        if (!Has(Index)) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
        std::unique_ptr<T>& Element = Elements[static_cast<std::size_t>(Index)];
        if (!Element) Element = std::make_unique<T>();
        return *Element;
    }
    bool Has(Long Index) const { return Index >= 0 && static_cast<std::size_t>(Index) < Elements.size(); }
    // Grows to hold Index, keeping the elements.
    void Grow(Long Index, Place Where = Place::current()) {
        CheckProfileIndex(Index, Where);
        if (!Has(Index)) Elements.resize(static_cast<std::size_t>(Index) + 1);
    }
    // Back to the single, new element 0.
    void Reset() {
        Elements.clear();
        Elements.emplace_back();
    }
    // As before the first use.
    void Forget() { Elements.clear(); }

private:
    // An element is made at its first use: the host may well count its profiles from 30,000.
    std::vector<std::unique_ptr<T>> Elements;
};
