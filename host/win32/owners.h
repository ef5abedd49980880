// Owners of what automation allocates: each frees what it holds, and none can be copied.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "host/failure.h"
#include "host/text.h"

// A VARIANT that is ours to clear.
class Variant {
public:
    Variant() noexcept { VariantInit(&Value); }
    ~Variant() { VariantClear(&Value); }
    Variant(Variant&& From) noexcept : Value(From.Detach()) {}
    Variant& operator=(Variant&& From) noexcept {
        std::swap(Value, From.Value);
        return *this;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    // Hands the VARIANT over.
    VARIANT Detach() noexcept {
        const VARIANT Handed = Value;
        VariantInit(&Value);
        return Handed;
    }

    VARIANT Value;
};

// A BSTR that is ours to free. Error 7 when there is no memory for it.
class Bstr {
public:
    explicit Bstr(TextView Text, Place Where = Place::current());
    ~Bstr() { SysFreeString(Value); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    BSTR Get() const noexcept { return Value; }
    // Hands the BSTR over.
    BSTR Detach() noexcept { return std::exchange(Value, nullptr); }

private:
    BSTR Value;
};

// A one-dimensional SAFEARRAY with lower bound 0 that is ours to destroy. Error 7 when there is no memory for
// it.
class ArrayOwner {
public:
    ArrayOwner(VARTYPE Type, std::size_t Elements, Place Where = Place::current());
    ~ArrayOwner() {
        if (Value != nullptr) SafeArrayDestroy(Value);
    }
    ArrayOwner(ArrayOwner&& From) noexcept : Value(From.Detach()) {}
    ArrayOwner(const ArrayOwner&) = delete;
    ArrayOwner& operator=(const ArrayOwner&) = delete;
    // Copies the element (a BSTR, or a pointer to a value of the array's type) into its place.
    void Put(std::size_t At, void* Element, Place Where = Place::current());
    SAFEARRAY** Address() noexcept { return &Value; }
    // Hands the array over.
    SAFEARRAY* Detach() noexcept { return std::exchange(Value, nullptr); }

private:
    SAFEARRAY* Value;
};

// A reference to a COM object that is ours to release.
template <class Interface> class ComPointer {
public:
    ComPointer() noexcept = default;
    explicit ComPointer(Interface* Taken) noexcept : Object(Taken) {}
    ~ComPointer() { Release(); }
    ComPointer(ComPointer&& From) noexcept : Object(std::exchange(From.Object, nullptr)) {}
    ComPointer& operator=(ComPointer&& From) noexcept {
        std::swap(Object, From.Object);
        return *this;
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    Interface* operator->() const noexcept { return Object; }
    Interface* Get() const noexcept { return Object; }
    explicit operator bool() const noexcept { return Object != nullptr; }
    // Another reference to the same object.
    ComPointer Share() const noexcept {
        if (Object != nullptr) Object->AddRef();
        return ComPointer(Object);
    }
    // Where a system call puts a new reference; the one held so far is released.
    Interface** Receive() noexcept {
        Release();
        return &Object;
    }
    void Release() noexcept {
        if (Interface* const Released = std::exchange(Object, nullptr)) Released->Release();
    }
    // Hands the reference over.
    Interface* Detach() noexcept { return std::exchange(Object, nullptr); }

private:
    Interface* Object = nullptr;
};

// The same at module level. What is still held when the process ends is not released: COM is gone by then.
template <class Interface> class StaticComPointer : public ComPointer<Interface> {
public:
    ~StaticComPointer() { this->Detach(); }
};
