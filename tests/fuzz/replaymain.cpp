// Replays fuzz inputs as ordinary tests, without libFuzzer: every file of the
// folders named on the command line goes through the target's property
// checks, in name order. Each file is named before it runs, so a property
// that fails (which aborts) or a sanitizer finding points at its input.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
        if (error) {
            std::fprintf(stderr, "cannot read the folder %s: %s\n", argv[i], error.message().c_str());
            return 1;
        }
        std::sort(files.begin(), files.end());
        for (const std::filesystem::path& file : files) {
            std::ifstream in(file, std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            std::fprintf(stderr, "replaying %s\n", file.c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    std::printf("replayed %d inputs\n", replayed);
    // An empty or mistyped folder must not pass as a replay.
    return replayed > 0 ? 0 : 1;
}
