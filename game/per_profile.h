// An array indexed by the host's profile index, grown on demand.
#pragma once

#include <memory>
#include <vector>

#include "host/failure.h"

// The highest profile index; 0 occurs in remote calls only.
inline constexpr Long MaxProfileIndex = 32767;

// Error 9 outside 0 to MaxProfileIndex.
inline void CheckProfileIndex(Long Profile, Place Where = Place::current()) {
    if (Profile < 0 || Profile > MaxProfileIndex) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
}

template <class T> class PerProfile {
public:
    // The element of a profile; error 9 when the array does not reach that far.
    T& operator()(Long Profile, Place Where = Place::current()) {
        if (!Has(Profile)) Fail(ErrorNumber::SubscriptOutOfRange, {}, Where);
        std::unique_ptr<T>& Element = Elements[static_cast<std::size_t>(Profile)];
        if (!Element) Element = std::make_unique<T>();
        return *Element;
    }
    bool Has(Long Profile) const {
        return Profile >= 0 && static_cast<std::size_t>(Profile) < Elements.size();
    }
    // Grows to hold the profile, keeping the elements.
    void Grow(Long Profile, Place Where = Place::current()) {
        CheckProfileIndex(Profile, Where);
        if (!Has(Profile)) Elements.resize(static_cast<std::size_t>(Profile) + 1);
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
