// FUZZ_TARGET SEEDS TEXTS: gives a fuzz target each seed, and that many texts that were made of them, always
// the same ones. This keeps the targets alive wherever the tests run; libFuzzer (scripts/fuzz) looks
// further.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t longest = 4096;

std::vector<std::string> seedsIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<std::string> seeds;
  for (const auto& file : files) {
    std::ifstream stream(file, std::ios::binary);
    seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  return seeds;
}

class Maker {
 public:
  explicit Maker(const std::vector<std::string>& seeds) : seeds_(seeds) {}

  std::string next() {
    std::string text = seeds_[below(seeds_.size())];
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) change(text);
    text.resize(std::min(text.size(), longest));
    return text;
  }

 private:
  std::size_t below(std::size_t end) { return end == 0 ? 0 : generator_() % end; }

  void change(std::string& text) {
    const std::size_t place = below(text.size() + 1);
    const std::size_t length = below(std::min<std::size_t>(text.size() - place, 16) + 1);
    switch (below(5)) {
      case 0:
        text.insert(place, 1, static_cast<char>(below(256)));
        break;
      case 1:
        text.erase(place, length);
        break;
      case 2:
        text.insert(place, text.substr(below(text.size() + 1), 1 + below(32)));
        break;
      case 3: {
        const std::string& other = seeds_[below(seeds_.size())];
        text = text.substr(0, place) + other.substr(below(other.size() + 1));
        break;
      }
      default:
        if (place < text.size()) text[place] = static_cast<char>(below(256));
        break;
    }
  }

  const std::vector<std::string>& seeds_;
  std::mt19937 generator_{1741079727};
};

int give(const std::string& text) {
  return LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

}  // namespace

int main(int argc, char** argv) {
  const auto seeds = argc == 3 ? seedsIn(argv[1]) : std::vector<std::string>();
  const int madeTexts = argc == 3 ? std::atoi(argv[2]) : 0;
  if (seeds.empty() || madeTexts <= 0) {
    std::fprintf(stderr, "usage: %s FOLDER_OF_SEEDS TEXTS\n", argv[0]);
    return 2;
  }
  for (const auto& seed : seeds) give(seed);
  Maker maker(seeds);
  for (int i = 0; i < madeTexts; ++i) give(maker.next());
  std::printf("%zu seeds and %d texts made of them\n", seeds.size(), madeTexts);
  return 0;
}
