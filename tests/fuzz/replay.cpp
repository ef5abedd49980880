// Runs a fuzz target over every file of a folder: the kept inputs, as a test.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

int main(int Count, char** Arguments) {
    if (Count != 2) return std::fprintf(stderr, "usage: %s FOLDER\n", Arguments[0]), 2;
    int Inputs = 0;
    for (const auto& Entry : std::filesystem::directory_iterator(Arguments[1])) {
        std::ifstream File(Entry.path(), std::ios::binary);
        const std::vector<char> Bytes{std::istreambuf_iterator<char>(File), {}};
        // Said first: an input that ends the process is the last one named.
        std::printf("%s\n", Entry.path().filename().c_str());
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(Bytes.data()), Bytes.size());
        ++Inputs;
    }
    std::printf("%d inputs\n", Inputs);
    return Inputs > 0 ? 0 : 1;
}
