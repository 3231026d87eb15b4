// Runs a fuzz target over the files of the given folders, for builds without a fuzzer.
#include "fuzz_target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace {

void replay(const std::filesystem::path& file)
{
    std::cout << file.string() << std::endl;  // named before it can fail
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> text(std::istreambuf_iterator<char>(in), {});
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> files;
    for (int index = 1; index < argc; ++index) {
        const std::filesystem::directory_iterator folder(argv[index]);
        std::copy(begin(folder), end(folder), std::back_inserter(files));
    }
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path& file : files) {
        replay(file);
    }
    return files.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
