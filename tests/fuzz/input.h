// Takes an input apart. Past its end every number is 0 and every text empty, so that any bytes are an input.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

class Input {
public:
    Input(const std::uint8_t* Data, std::size_t Size) : At(Data), Left(Size) {}

    bool IsEmpty() const { return Left == 0; }

    std::uint8_t Byte() {
        std::uint8_t Value = 0;
        Copy(&Value, sizeof Value);
        return Value;
    }
    // 0 to Bound - 1.
    std::uint32_t Below(std::uint32_t Bound) { return Byte() % Bound; }
    std::int32_t Long() {
        std::int32_t Value = 0;
        Copy(&Value, sizeof Value);
        return Value;
    }
    std::string Bytes(std::size_t Most) {
        std::string Taken(std::min(Most, Left), '\0');
        Copy(Taken.data(), Taken.size());
        return Taken;
    }
    // A byte is a character; 255 begins one above the single-byte code page.
    std::wstring Text() {
        std::wstring Taken;
        while (!IsEmpty()) {
            const std::uint8_t First = Byte();
            Taken += static_cast<wchar_t>(First != 255 ? First : 256 + Byte());
        }
        return Taken;
    }

private:
    void Copy(void* To, std::size_t Size) {
        const std::size_t Taken = std::min(Size, Left);
        if (Taken == 0) return;
        std::memcpy(To, At, Taken);
        At += Taken;
        Left -= Taken;
    }

    const std::uint8_t* At;
    std::size_t Left;
};
