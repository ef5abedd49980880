// A keyed collection: exact keys, order of insertion kept.
#pragma once

#include <list>
#include <string>
#include <unordered_map>

#include "host/failure.h"

template <class T> class Collection {
public:
    struct Entry {
        std::wstring Key;
        T Item;
    };

    // Error 457 when the key is there already.
    void Add(T Item, const std::wstring& Key, Place Where = Place::current()) {
        if (Contains(Key)) Fail(ErrorNumber::KeyExists, {}, Where);
        Entries.push_back({Key, std::move(Item)});
        ByKey.emplace(Key, std::prev(Entries.end()));
    }
    // Error 5 when there is no such key.
    const T& Item(const std::wstring& Key, Place Where = Place::current()) const {
        const auto Found = ByKey.find(Key);
        if (Found == ByKey.end()) Fail(ErrorNumber::InvalidCall, {}, Where);
        return Found->second->Item;
    }
    // Error 5 when there is no such key.
    void Remove(const std::wstring& Key, Place Where = Place::current()) {
        const auto Found = ByKey.find(Key);
        if (Found == ByKey.end()) Fail(ErrorNumber::InvalidCall, {}, Where);
        Entries.erase(Found->second);
        ByKey.erase(Found);
    }
    bool Contains(const std::wstring& Key) const { return ByKey.count(Key) != 0; }
    std::size_t Count() const { return Entries.size(); }
    auto begin() const { return Entries.begin(); }
    auto end() const { return Entries.end(); }

    Collection() = default;
    // The index points into the list: a collection moves as a whole and is never copied.
    Collection(Collection&&) noexcept = default;
    Collection& operator=(Collection&&) noexcept = default;
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    ~Collection() = default;

private:
    std::list<Entry> Entries;
    std::unordered_map<std::wstring, typename std::list<Entry>::iterator> ByKey;
};
