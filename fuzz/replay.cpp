// Runs a fuzz target once over each file given, and over each file of a folder given: the kept corpus as a plain test.
//
// Prints how many files were replayed; exit status 0, or 2 where there was nothing to replay. A defect ends the program.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

/// The files to replay, in a fixed order.
std::vector<fs::path> filesOf(int count, char** paths) {
  std::vector<fs::path> files;
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(paths[i])) {
      files.emplace_back(paths[i]);
      continue;
    }
    for (const auto& entry : fs::directory_iterator(paths[i]))
      if (entry.is_regular_file())
        files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<fs::path> files = filesOf(argc, argv);
  for (const fs::path& file : files) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
      std::fprintf(stderr, "cannot read %s\n", file.c_str());
      return 2;
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu files replayed\n", files.size());
  return files.empty() ? 2 : 0;
}
