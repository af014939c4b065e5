// Drives a fuzz target where the compiler comes without a fuzzer: replays the given files and folders, then
// runs inputs mutated from them at random, the same ones every time.
//
//   fuzz_... [-runs=N] [-max_total_time=SECONDS] [file or folder ...]

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Random = std::mt19937_64;

std::size_t below(Random& random, std::size_t limit) {
  return static_cast<std::size_t>(random() % limit);
}

std::string mutated(std::string input, const std::vector<std::string>& corpus, Random& random) {
  static const std::string_view pieces =
      "null{}[]\"\\u0000\\ud83d1e400-99999999999999999999true:,\xFF\xEF\xBB\xBF";
  for (std::size_t changes = 1 + below(random, 6); changes > 0; --changes) {
    const std::size_t at = below(random, input.size() + 1);
    switch (below(random, 5)) {
      case 0:
        input.insert(at, pieces.substr(below(random, pieces.size()), 1 + below(random, 8)));
        break;
      case 1:
        input.insert(at, 1, static_cast<char>(random()));
        break;
      case 2:
        input.erase(at, 1 + below(random, 16));
        break;
      case 3:
        if (at < input.size()) input[at] = static_cast<char>(random());
        break;
      default: {
        const std::string& other = corpus[below(random, corpus.size())];
        const std::size_t from = below(random, other.size() + 1);
        input.replace(at, below(random, 40), other.substr(from, below(random, 120)));
      }
    }
  }
  return input;
}

void run(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  long runs = 20'000;
  long seconds = 0;
  std::vector<std::string> corpus{""};
  const auto addFile = [&](const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  };
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "-runs=", 6) == 0) {
      runs = std::atol(argv[i] + 6);
    } else if (std::strncmp(argv[i], "-max_total_time=", 16) == 0) {
      seconds = std::atol(argv[i] + 16);
    } else if (std::filesystem::is_directory(argv[i])) {
      for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
        addFile(entry.path());
    } else {
      addFile(argv[i]);
    }
  }

  for (const auto& input : corpus)
    run(input);
  Random random(1);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  long done = 0;
  while (seconds > 0 ? std::chrono::steady_clock::now() < end : done < runs) {
    run(mutated(corpus[below(random, corpus.size())], corpus, random));
    ++done;
  }
  std::printf("%zu inputs replayed, %ld made at random\n", corpus.size(), done);
  return 0;
}
